#pragma once

#include "icode/SlcICodeTraits.h"
#include "icode/SlcLexType.h"

/// Base of instructions. One instruction stands for all shading points of a grid.
///
/// Instructions are shared through `SlcPtr` and own nothing alone: operands and labels are shared
/// too. They are records, whose operands every pass reads and replaces in place; which operands
/// an instruction reads and writes is told once, in `SlcOperandWalker`.
class SlcICode : public SlcCollectable {
public:
    /// Calls the walker's `Case` for the instruction's own class.
    virtual void ApplyWalker(SlcAllICodeWalker* walker) = 0;

    /// Whether the class has this trait, or one of these.
    [[nodiscard]] bool Is(unsigned traits) const { return (Traits() & traits) != 0; }

protected:
    [[nodiscard]] virtual unsigned Traits() const = 0;
};

/// The `ApplyWalker` of the concrete instruction class `Self`, which derives from `Base` through
/// it.
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
