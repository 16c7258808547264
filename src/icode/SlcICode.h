#pragma once

#include "icode/SlcICodeTraits.h"
#include "icode/SlcLexType.h"

/// Base of instructions. One instruction represents its execution for all shading points of a grid.
///
/// Instructions, their operands and their labels are all shared through `SlcPtr`. Instructions are
/// records, whose operands passes read and replace in place. `SlcOperandWalker` shows which
/// operands an instruction reads and writes.
class SlcICode : public SlcCollectable {
public:
    /// Calls the walker's `Case` for the instruction's own class.
    virtual void ApplyWalker(SlcAllICodeWalker* walker) = 0;

    /// True if the class has any of these traits: `code->Is(BeginsBlock | EndsBlock)`.
    [[nodiscard]] bool Is(unsigned traits) const { return (Traits() & traits) != 0; }

    /// Index at which `SlcDefUse` caches what the instruction reads and writes; -1 before that.
    /// Code that replaces an operand afterwards must reset the index to -1.
    int m_flowIndex = -1;

protected:
    [[nodiscard]] virtual unsigned Traits() const = 0;
};

/// Implements the walker dispatch and the traits of the concrete instruction class `Self`. This is
/// the class between `Self` and `Base`, whose constructors it inherits:
///
///     class SlcAddICode : public SlcICodeOf<SlcAddICode, SlcArithExprICode> { using ... };
template <class Self, class Base>
class SlcICodeOf : public Base {
public:
    using Base::Base;
    void ApplyWalker(SlcAllICodeWalker* walker) override
    {
        walker->Case(SlcPtr<Self>(static_cast<Self*>(this)));
    }

protected:
    [[nodiscard]] unsigned Traits() const override { return SlcICodeTraits::k_of<Self>; }
};
