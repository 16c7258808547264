#pragma once

#include "icode/SlcICode.h"

/// Visits every operand of an instruction as read or written. This is the only class that knows
/// which operands an instruction has: constant collection, data flow and renaming derive from it.
/// Null operands (an absent result or condition) are skipped. Variables that an instruction
/// accesses without naming them (`L` in a light loop, `P` in the lighting built-ins) are not
/// visited: `SlcDefUse` adds those. Whether a write reaches all points is a trait of the
/// instruction.
class SlcOperandWalker : public SlcAllICodeWalker {
public:
    /// Visits the operands of one instruction: all reads in the order of its fields, then all
    /// writes.
    void Visit(const SlcPtr<SlcICode>& code) { code->ApplyWalker(this); }

protected:
    /// `operand` is the field itself, never null; it may be replaced in place. Constants are
    /// visited too.
    virtual void Read(SlcOperand& operand) = 0;
    virtual void Write(SlcOperand& operand) = 0;
    /// Called for an output argument of a call, which is both read and written. By default calls
    /// `Read`, then `Write`.
    virtual void ReadWrite(SlcOperand& operand);
    /// Called for the flag that limits an instruction to some points. By default calls `Read`.
    virtual void ReadCondition(SlcOperand& condition) { Read(condition); }

    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcAssignICode> code) override;
    void Case(SlcPtr<SlcAssignToZeroICode> code) override;
    void Case(SlcPtr<SlcArithExprICode> code) override;
    void Case(SlcPtr<SlcUnaryMinusICode> code) override;
    void Case(SlcPtr<SlcBinOpBoolExprICode> code) override;
    void Case(SlcPtr<SlcIfTrueGotoICode> code) override;
    void Case(SlcPtr<SlcIfFalseGotoICode> code) override;
    void Case(SlcPtr<SlcCallICode> code) override;
    void Case(SlcPtr<SlcPointICode> code) override;
    void Case(SlcPtr<SlcMatrixICode> code) override;
    void Case(SlcPtr<SlcColorICode> code) override;
    void Case(SlcPtr<SlcIlluminateICode> code) override;
    void Case(SlcPtr<SlcSolarICode> code) override;
    void Case(SlcPtr<SlcCheckIlluminanceICode> code) override;
    void Case(SlcPtr<SlcIfICode> code) override;
    void Case(SlcPtr<SlcBreakICode> code) override;
    void Case(SlcPtr<SlcContinueICode> code) override;
    void Case(SlcPtr<SlcTransformSpaceICode> code) override;
    void Case(SlcPtr<SlcCallDSOICode> code) override;
    void Case(SlcPtr<SlcTextureSTPointsICode> code) override;
    void Case(SlcPtr<SlcTexturePointsICode> code) override;
    void Case(SlcPtr<SlcEvalLightICode> code) override;
    void Case(SlcPtr<SlcCheckValidArrayIndexICode> code) override;
    void Case(SlcPtr<SlcArrayRefICode> code) override;
    void Case(SlcPtr<SlcConcatSpaceMatrixICode> code) override;
    void Case(SlcPtr<SlcFilterstepPointsICode> code) override;
    void Case(SlcPtr<SlcSetUniformBoolFlagICode> code) override;
    void Case(SlcPtr<SlcInvertBoolFlagICode> code) override;
    void Case(SlcPtr<SlcOrBoolFlagICode> code) override;
    void Case(SlcPtr<SlcConvertArrayDSOICode> code) override;
    void Default(SlcPtr<SlcICode> code) override;

private:
    void ReadIfSet(SlcOperand& operand);
    void ReadConditionIfSet(SlcOperand& condition);
    void WriteIfSet(SlcOperand& operand);
};
