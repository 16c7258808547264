#pragma once

#include "icode/SlcICode.h"

/// Shows every operand of an instruction as read or written. The one place that knows which
/// operands an instruction has: constant collection, data flow and renaming derive from it.
///
/// Operands that an instruction does not have (a null result or condition) are passed over. What an
/// instruction touches without naming it (`L` of a light loop, `P` of the lighting built-ins) is
/// not shown here: `SlcDefUse` adds that. Whether a write reaches all points is a trait of the
/// instruction, not told here either.
class SlcOperandWalker : public SlcAllICodeWalker {
public:
    /// Shows the operands of one instruction: all reads in the order of its fields, then all
    /// writes.
    void Visit(const SlcPtr<SlcICode>& code) { code->ApplyWalker(this); }

protected:
    /// `operand` is the field itself: never null, and may be replaced in place. Constants are shown
    /// too.
    virtual void Read(SlcOperand& operand) = 0;
    virtual void Write(SlcOperand& operand) = 0;
    /// An argument of a call that is both, by the row of the built-in. By default a read and then
    /// a write.
    virtual void ReadWrite(SlcOperand& operand);
    /// The flag that limits an instruction to some points. By default a read.
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
