#pragma once

#include "icode/SlcICode.h"

/// Visits every operand of an instruction as read or written, as SlcICodeClasses.def lists them.
/// The walkers that collect constants, compute data flow and rename variables derive from it.
///
/// Null operands (an absent result or condition) are skipped. Variables that an instruction
/// accesses without naming them (`L` in a light loop, `P` in the lighting built-ins) are not
/// visited: `SlcDefUse` adds them. Whether a write reaches all points is a trait of the
/// instruction.
class SlcOperandWalker : public SlcAllICodeWalker {
public:
    /// Visits the operands of one instruction: all reads in the order of SlcICodeClasses.def, then
    /// all writes. Of a call it visits the condition, the input arguments, the output arguments and
    /// the result.
    void Visit(const SlcPtr<SlcICode>& code) { code->ApplyWalker(this); }

protected:
    /// `operand` is the field itself, never null; it may be replaced in place. Constants are
    /// visited too.
    virtual void Read(SlcOperand& operand) = 0;
    virtual void Write(SlcOperand& operand) = 0;
    /// Called for an output argument of a call of a built-in, which is both read and written. By
    /// default calls `Read`, then `Write`.
    virtual void ReadWrite(SlcOperand& operand);
    /// Called for the flag that limits an instruction to some points. By default calls `Read`.
    virtual void ReadCondition(SlcOperand& condition) { Read(condition); }

    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcCallICode> code) override;
#define SLC_ICODE_OPERANDS(name, base, traits, reads, writes) void Case(SlcPtr<name> code) override;
#include "icode/SlcICodeClasses.def"
    void Default(SlcPtr<SlcICode> code) override;

private:
    struct Fields;
};
