// The values of each instruction, in the order that the virtual machine expects: its number,
// usually the result, the condition of a whole-grid form, then the operands that it reads. The
// number of an operator is found by its name. Operators, except for the unary minus, have the same
// names as in C++, so that the two outputs stay consistent.
//
// Calls, transforms, lights and textures are in SlcGenByteCodeCalls.cpp.
//
// Tested by tests/backends/GenByteCodeTest.cpp, and against the layouts of the reader by
// ByteCodeTableTest.cpp.

#include <algorithm>
#include <limits>

#include "backends/SlcGenByteCode.h"
#include "icode/SlcICodeName.h"
#include "icode/SlcICodes.h"
#include "support/reports/SlcSemanticError.h"

// Operators

void SlcGenByteCode::Case(SlcPtr<SlcAssignICode> code)
{
    AddOperator(*code, code->m_dest, code->m_source, [&] { return m_opName.GetString(code); });
    m_code.AddVar(code->m_dest);
    m_code.AddVar(code->m_source);
}

void SlcGenByteCode::Case(SlcPtr<SlcAssignSIMDICode> code)
{
    AddOperator(*code, code->m_dest, code->m_source,
                [&] { return m_opName.GetString(SlcPtr<SlcAssignICode>(code)) + "_SIMD"; });
    m_code.AddVar(code->m_dest);
    m_code.AddVar(code->m_source);
}

void SlcGenByteCode::Case(SlcPtr<SlcAssignToZeroICode> code)
{
    m_code.AddInstr(std::string("ASSIGN_TO_ZERO_").append(SlcTypeWord(code->m_dest->GetType())));
    m_code.AddVar(code->m_dest);
}

void SlcGenByteCode::Case(SlcPtr<SlcArithExprICode> code)
{
    AddOperator(*code, code->m_leftExpr, code->m_rightExpr,
                [&] { return m_opName.GetString(code); });
    m_code.AddVar(code->m_resultId);
    m_code.AddVar(code->m_leftExpr);
    m_code.AddVar(code->m_rightExpr);
}

void SlcGenByteCode::Case(SlcPtr<SlcBinOpBoolExprICode> code)
{
    AddOperator(*code, code->m_leftExpr, code->m_rightExpr,
                [&] { return m_opName.GetString(code); });
    m_code.AddVar(code->m_resultId);
    m_code.AddVar(code->m_leftExpr);
    m_code.AddVar(code->m_rightExpr);
}

void SlcGenByteCode::Case(SlcPtr<SlcUnaryMinusICode> code)
{
    m_code.AddInstr(m_opName.GetString(code));
    m_code.AddVar(code->m_dest);
    m_code.AddVar(code->m_source);
}

void SlcGenByteCode::Case(SlcPtr<SlcPointICode> code)
{
    m_code.AddInstr(SqxPrimitive::INIT_POINT);
    for (const SlcOperand& operand : {code->m_dest, code->m_x, code->m_y, code->m_z})
        m_code.AddVar(operand);
}

void SlcGenByteCode::Case(SlcPtr<SlcColorICode> code)
{
    m_code.AddInstr(SqxPrimitive::INIT_COLOR);
    for (const SlcOperand& operand : {code->m_dest, code->m_r, code->m_g, code->m_b})
        m_code.AddVar(operand);
}

void SlcGenByteCode::Case(SlcPtr<SlcMatrixICode> code)
{
    m_code.AddInstr(SqxPrimitive::INIT_MATRIX);
    m_code.AddVar(code->m_dest);
    m_code.AddVars(code->m_values);
}

// Jumps and brackets

void SlcGenByteCode::Case(SlcPtr<SlcLabelICode> code)
{
    m_code.AddLabelRef(code);
}

void SlcGenByteCode::Case(SlcPtr<SlcGotoICode> code)
{
    m_code.AddInstr(SqxPrimitive::GOTO);
    m_code.AddGotoLabel(code->m_label);
}

void SlcGenByteCode::Case(SlcPtr<SlcIfTrueGotoICode> code)
{
    m_code.AddInstr(SqxPrimitive::IF_TRUE_GOTO);
    m_code.AddVar(code->m_flag);
    m_code.AddGotoLabel(code->m_label);
}

void SlcGenByteCode::Case(SlcPtr<SlcIfFalseGotoICode> code)
{
    m_code.AddInstr(SqxPrimitive::IF_FALSE_GOTO);
    m_code.AddVar(code->m_flag);
    m_code.AddGotoLabel(code->m_label);
}

void SlcGenByteCode::Case(SlcPtr<SlcBeginParallelICode> code)
{
    m_code.AddInstr(SqxPrimitive::BEGIN_PARALLEL);
    m_code.AddLabelRef(code->m_label);
}

void SlcGenByteCode::Case(SlcPtr<SlcEndParallelICode>)
{
    m_code.AddInstr(SqxPrimitive::END_PARALLEL);
}

void SlcGenByteCode::Case(SlcPtr<SlcIfTrueICode> code)
{
    m_code.AddInstr(SqxPrimitive::IF_TRUE);
    m_code.AddVar(code->m_flag);
}

void SlcGenByteCode::Case(SlcPtr<SlcIfFalseICode> code)
{
    m_code.AddInstr(SqxPrimitive::IF_FALSE);
    m_code.AddVar(code->m_flag);
}

void SlcGenByteCode::Case(SlcPtr<SlcEndIfICode> code)
{
    m_code.AddInstr(SqxPrimitive::END_IF);
    m_code.AddLabelRef(code->m_label);
}

void SlcGenByteCode::Case(SlcPtr<SlcBreakICode> code)
{
    ClearFlags(code->m_flags);
}

void SlcGenByteCode::Case(SlcPtr<SlcContinueICode> code)
{
    ClearFlags(code->m_flags);
}

void SlcGenByteCode::ClearFlags(const std::deque<SlcOperand>& flags)
{
    for (const SlcOperand& flag : flags) {
        m_code.AddInstr(SqxPrimitive::SET_BOOL);
        m_code.AddVar(flag);
    }
}

// Flags

void SlcGenByteCode::Case(SlcPtr<SlcSetUniformBoolFlagICode> code)
{
    m_code.AddInstr(SqxPrimitive::SET_UNIFORM_BOOL_FLAG);
    m_code.AddVar(code->m_dest);
    m_code.AddVar(code->m_source);
}

void SlcGenByteCode::Case(SlcPtr<SlcInvertBoolFlagICode> code)
{
    m_code.AddInstr(code->m_outer ? SqxPrimitive::INVERT_INNER_BOOL_FLAG
                                  : SqxPrimitive::INVERT_BOOL_FLAG);
    m_code.AddVar(code->m_dest);
    m_code.AddVar(code->m_source);
    m_code.AddVarIfSet(code->m_outer);
}

void SlcGenByteCode::Case(SlcPtr<SlcOrBoolFlagICode> code)
{
    m_code.AddInstr(SqxPrimitive::OR_BOOL_FLAG);
    m_code.AddVar(code->m_dest);
    m_code.AddVar(code->m_left);
    m_code.AddVar(code->m_right);
}

// Arrays

void SlcGenByteCode::Case(SlcPtr<SlcCheckValidArrayIndexICode> code)
{
    // The line number is only used in a message, so a large one is no reason to reject the shader.
    constexpr int highestLine = std::numeric_limits<std::int16_t>::max();
    m_code.AddInstr(SqxPrimitive::CHECK_VALID_ARRAY_INDEX);
    m_code.AddVar(code->m_arrayName);
    m_code.AddVar(code->m_index);
    m_code.AddConst(code->m_size, "Array size");
    m_code.AddVar(code->m_fileName);
    m_code.AddConst(std::clamp(code->m_line, 0, highestLine), "Line number");
}

void SlcGenByteCode::Case(SlcPtr<SlcArrayRefICode> code)
{
    m_code.AddInstr(SqxPrimitive::ARRAY_REF);
    m_code.AddVar(code->m_result);
    m_code.AddVar(code->m_array);
    m_code.AddVar(code->m_index);
}

void SlcGenByteCode::Default(SlcPtr<SlcICode> code)
{
    m_errors->FatalError("Cannot generate byte-code for " + std::string(SlcICodeName(*code)));
}
