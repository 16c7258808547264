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

    /// Whether the class has this trait, or one of these: `code->Is(BeginsBlock | EndsBlock)`.
    [[nodiscard]] bool Is(unsigned traits) const { return (Traits() & traits) != 0; }

protected:
    [[nodiscard]] virtual unsigned Traits() const = 0;
};

/// What each concrete instruction class `Self` has of its own, put between it and `Base`: its step
/// into a walker and its traits. The constructors are those of `Base`:
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
