// Lists the operands that each instruction reads and writes, once for all passes: each `Case` names
// the fields, reads first. Fields are passed by reference, so that a pass can also replace an
// operand.
//
// An output argument is also read, since a call may leave it unchanged. A constant in its position
// stands for an output that the source omits, and is not written.
//
// Tested by tests/icode/SlcOperandWalkerTest.cpp; docs/icode.md shows the same as a table, which
// tests/layers compares with this file.

#include "icode/SlcOperandWalker.h"

#include "icode/SlcICodes.h"
#include "symbols/SlcCallFormals.h"

namespace {

/// True if the call writes the argument at `position`, according to the card of the built-in.
bool IsOutputArg(const SlcCallICode& call, std::size_t position)
{
    // A constant stands for an output that the source omits.
    return !call.m_args[position]->IsConst() && call.m_funcEntry &&
           SlcFormalAt(*call.m_funcEntry, position).isOutput;
}

}  // namespace

void SlcOperandWalker::ReadWrite(SlcOperand& operand)
{
    Read(operand);
    Write(operand);
}

void SlcOperandWalker::ReadIfSet(SlcOperand& operand)
{
    if (operand)
        Read(operand);
}

void SlcOperandWalker::ReadConditionIfSet(SlcOperand& condition)
{
    if (condition)
        ReadCondition(condition);
}

void SlcOperandWalker::WriteIfSet(SlcOperand& operand)
{
    if (operand)
        Write(operand);
}

void SlcOperandWalker::Case(SlcPtr<SlcAssignICode> code)
{
    Read(code->m_source);
    Write(code->m_dest);
}

void SlcOperandWalker::Case(SlcPtr<SlcAssignToZeroICode> code)
{
    Write(code->m_dest);
}

void SlcOperandWalker::Case(SlcPtr<SlcArithExprICode> code)
{
    Read(code->m_leftExpr);
    Read(code->m_rightExpr);
    Write(code->m_resultId);
}

void SlcOperandWalker::Case(SlcPtr<SlcUnaryMinusICode> code)
{
    Read(code->m_source);
    Write(code->m_dest);
}

void SlcOperandWalker::Case(SlcPtr<SlcBinOpBoolExprICode> code)
{
    Read(code->m_leftExpr);
    Read(code->m_rightExpr);
    Write(code->m_resultId);
}

void SlcOperandWalker::Case(SlcPtr<SlcIfTrueGotoICode> code)
{
    Read(code->m_flag);
}

void SlcOperandWalker::Case(SlcPtr<SlcIfFalseGotoICode> code)
{
    Read(code->m_flag);
}

void SlcOperandWalker::Case(SlcPtr<SlcCallICode> code)
{
    ReadConditionIfSet(code->m_form.condition);
    for (std::size_t i = 0; i < code->m_args.size(); ++i)
        if (!IsOutputArg(*code, i))
            Read(code->m_args[i]);
    for (std::size_t i = 0; i < code->m_args.size(); ++i)
        if (IsOutputArg(*code, i))
            ReadWrite(code->m_args[i]);
    WriteIfSet(code->m_result);
}

void SlcOperandWalker::Case(SlcPtr<SlcPointICode> code)
{
    Read(code->m_x);
    Read(code->m_y);
    Read(code->m_z);
    Write(code->m_dest);
}

void SlcOperandWalker::Case(SlcPtr<SlcMatrixICode> code)
{
    for (SlcOperand& value : code->m_values)
        Read(value);
    Write(code->m_dest);
}

void SlcOperandWalker::Case(SlcPtr<SlcColorICode> code)
{
    Read(code->m_r);
    Read(code->m_g);
    Read(code->m_b);
    Write(code->m_dest);
}

void SlcOperandWalker::Case(SlcPtr<SlcIlluminateICode> code)
{
    Read(code->m_position);
    ReadIfSet(code->m_axis);
    ReadIfSet(code->m_angle);
    Read(code->m_Ps);
    ReadConditionIfSet(code->m_form.condition);
    Write(code->m_flag);
    Write(code->m_L);
}

void SlcOperandWalker::Case(SlcPtr<SlcSolarICode> code)
{
    Read(code->m_axis);
    Read(code->m_angle);
    ReadConditionIfSet(code->m_form.condition);
    Write(code->m_flag);
    Write(code->m_L);
}

void SlcOperandWalker::Case(SlcPtr<SlcCheckIlluminanceICode> code)
{
    Read(code->m_position);
    Read(code->m_axis);
    Read(code->m_angle);
    ReadConditionIfSet(code->m_form.condition);
    Write(code->m_flag);
}

void SlcOperandWalker::Case(SlcPtr<SlcIfICode> code)
{
    Read(code->m_flag);
}

void SlcOperandWalker::Case(SlcPtr<SlcBreakICode> code)
{
    for (SlcOperand& flag : code->m_flags)
        Write(flag);
}

void SlcOperandWalker::Case(SlcPtr<SlcContinueICode> code)
{
    for (SlcOperand& flag : code->m_flags)
        Write(flag);
}

void SlcOperandWalker::Case(SlcPtr<SlcTransformSpaceICode> code)
{
    Read(code->m_source);
    Read(code->m_space);
    ReadConditionIfSet(code->m_form.condition);
    Write(code->m_dest);
}

void SlcOperandWalker::Case(SlcPtr<SlcCallDSOICode> code)
{
    for (SlcOperand& arg : code->m_args)
        Read(arg);
    WriteIfSet(code->m_result);
}

void SlcOperandWalker::Case(SlcPtr<SlcTextureSTPointsICode> code)
{
    Read(code->m_s);
    Read(code->m_t);
    ReadConditionIfSet(code->m_condition);
    for (SlcOperand& corner : code->m_corners)
        Write(corner);
}

void SlcOperandWalker::Case(SlcPtr<SlcTexturePointsICode> code)
{
    Read(code->m_point);
    ReadConditionIfSet(code->m_condition);
    for (SlcOperand& corner : code->m_corners)
        Write(corner);
}

void SlcOperandWalker::Case(SlcPtr<SlcEvalLightICode> code)
{
    Read(code->m_position);
}

void SlcOperandWalker::Case(SlcPtr<SlcCheckValidArrayIndexICode> code)
{
    Read(code->m_arrayName);
    Read(code->m_index);
    Read(code->m_fileName);
}

void SlcOperandWalker::Case(SlcPtr<SlcArrayRefICode> code)
{
    Read(code->m_array);
    Read(code->m_index);
    Write(code->m_result);
}

void SlcOperandWalker::Case(SlcPtr<SlcConcatSpaceMatrixICode> code)
{
    Read(code->m_source);
    Write(code->m_dest);
}

void SlcOperandWalker::Case(SlcPtr<SlcFilterstepPointsICode> code)
{
    Read(code->m_y);
    ReadConditionIfSet(code->m_condition);
    Write(code->m_x);
}

void SlcOperandWalker::Case(SlcPtr<SlcSetUniformBoolFlagICode> code)
{
    Read(code->m_source);
    Write(code->m_dest);
}

void SlcOperandWalker::Case(SlcPtr<SlcInvertBoolFlagICode> code)
{
    Read(code->m_source);
    ReadIfSet(code->m_outer);
    Write(code->m_dest);
}

void SlcOperandWalker::Case(SlcPtr<SlcOrBoolFlagICode> code)
{
    Read(code->m_left);
    Read(code->m_right);
    Write(code->m_dest);
}

void SlcOperandWalker::Case(SlcPtr<SlcConvertArrayDSOICode> code)
{
    Read(code->m_source);
    Write(code->m_dest);
}

void SlcOperandWalker::Default(SlcPtr<SlcICode>) {}
