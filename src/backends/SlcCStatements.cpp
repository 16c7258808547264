// Statements for control flow, arithmetic, assignments, arrays and flags. Most instructions become
// one line, a macro call:
//
//     Ci = x * y        MULT_FLOAT_COLOR(i_hiddens.GetCi()[polyCnt], v.T1_[polyCnt], u.T2_);
//
// A varying operand has two texts: its value at one point (Text), used in a loop over points, and
// the array of its values (Grid), used by a whole-grid form. An empty statement follows each label,
// since a block may end there.
//
// docs/generated-code.md lists the macros. Tested by tests/backends/CStatementsTest.cpp, and by
// tests/compile, which compiles the generated code of whole shaders.

#include "backends/SlcCStatements.h"

#include "backends/SlcGeneratedText.h"
#include "icode/SlcICodeName.h"
#include "support/reports/SlcSemanticError.h"

using Generated = SlcGeneratedText;

SlcCStatements::SlcCStatements(SlcPtr<SlcSemanticError> errors, SlcText& out)
    : SlcCText(out),
      m_errors(std::move(errors))
{
}

void SlcCStatements::Fatal(const std::string& message) const
{
    if (m_comment)
        m_errors->FatalErrorICode(m_comment, message);
    m_errors->FatalError(message);
}

void SlcCStatements::WriteCall(std::string_view name, const Texts& arguments)
{
    m_out << name << '(';
    const char* separator = "";
    for (const std::string& argument : arguments) {
        m_out << separator << argument;
        separator = ", ";
    }
    m_out << ");\n";
}

std::string SlcCStatements::Text(const SlcOperand& operand)
{
    return m_values.GetString(operand);
}

std::string SlcCStatements::Grid(const SlcOperand& operand)
{
    return m_values.GetStringSIMD(operand);
}

SlcCStatements::Texts SlcCStatements::GridTexts(std::initializer_list<SlcOperand> operands)
{
    Texts texts;
    for (const SlcOperand& operand : operands)
        texts.push_back(Grid(operand));
    return texts;
}

void SlcCStatements::Default(SlcPtr<SlcICode> code)
{
    Fatal("Cannot generate C++ code for " + std::string(SlcICodeName(*code)));
}

// Control flow.

void SlcCStatements::Case(SlcPtr<SlcLabelICode> code)
{
    Line(code->Name(), ":\t;");
}

void SlcCStatements::Case(SlcPtr<SlcGotoICode> code)
{
    Line("goto ", code->m_label->Name(), ";");
}

void SlcCStatements::Case(SlcPtr<SlcIfTrueGotoICode> code)
{
    Line("if (BOOL_IS_TRUE(", Text(code->m_flag), ")) goto ", code->m_label->Name(), ";");
}

void SlcCStatements::Case(SlcPtr<SlcIfFalseGotoICode> code)
{
    Line("if (BOOL_IS_FALSE(", Text(code->m_flag), ")) goto ", code->m_label->Name(), ";");
}

/// `WriteParallelRun` writes the start of a run that is a loop of its own.
void SlcCStatements::Case(SlcPtr<SlcBeginParallelICode>)
{
    Line("{");
}

void SlcCStatements::Case(SlcPtr<SlcEndParallelICode>)
{
    Line("}");
}

void SlcCStatements::Case(SlcPtr<SlcIfTrueICode> code)
{
    Line("if (BOOL_IS_TRUE(", Text(code->m_flag), ")) {");
}

void SlcCStatements::Case(SlcPtr<SlcIfFalseICode> code)
{
    Line("if (BOOL_IS_FALSE(", Text(code->m_flag), ")) {");
}

void SlcCStatements::Case(SlcPtr<SlcEndIfICode>)
{
    Line("}");
}

void SlcCStatements::Case(SlcPtr<SlcBeginIlluminanceICode>)
{
    Line("for (lightCnt = 0; lightCnt < i_numLights; lightCnt++) {");
}

void SlcCStatements::Case(SlcPtr<SlcEndIlluminanceICode>)
{
    Line("}");
}

void SlcCStatements::Case(SlcPtr<SlcBreakICode> code)
{
    ClearFlags(code->m_flags);
}

void SlcCStatements::Case(SlcPtr<SlcContinueICode> code)
{
    ClearFlags(code->m_flags);
}

void SlcCStatements::ClearFlags(const std::deque<SlcOperand>& flags)
{
    for (const SlcOperand& flag : flags)
        m_out << "SET_BOOL(" << Text(flag) << ", false); ";
    Line();
}

void SlcCStatements::Case(SlcPtr<SlcCommentICode> code)
{
    m_comment = code;
    Line();
    Line("\t// ", code->m_text);
}

void SlcCStatements::Case(SlcPtr<SlcInvisibleICode>) {}

// Values.

void SlcCStatements::Case(SlcPtr<SlcArithExprICode> code)
{
    WriteCall(m_names.GetString(code),
              {Text(code->m_resultId), Text(code->m_leftExpr), Text(code->m_rightExpr)});
}

void SlcCStatements::Case(SlcPtr<SlcBinOpBoolExprICode> code)
{
    WriteCall(m_names.GetString(code),
              {Text(code->m_resultId), Text(code->m_leftExpr), Text(code->m_rightExpr)});
}

void SlcCStatements::Case(SlcPtr<SlcAssignICode> code)
{
    WriteCall(m_names.GetString(code), {Text(code->m_dest), Text(code->m_source)});
}

void SlcCStatements::Case(SlcPtr<SlcAssignSIMDICode> code)
{
    if (m_inPointLoop)
        return Case(SlcPtr<SlcAssignICode>(code));
    WriteCall(m_names.GetString(SlcPtr<SlcAssignICode>(code)) + "_SIMD",
              {Grid(code->m_dest), Grid(code->m_source)});
}

void SlcCStatements::Case(SlcPtr<SlcUnaryMinusICode> code)
{
    WriteCall(m_names.GetString(code), {Text(code->m_dest), Text(code->m_source)});
}

void SlcCStatements::Case(SlcPtr<SlcPointICode> code)
{
    WriteCall(SqxPrimitive::INIT_POINT,
              {Text(code->m_dest), Text(code->m_x), Text(code->m_y), Text(code->m_z)});
}

void SlcCStatements::Case(SlcPtr<SlcColorICode> code)
{
    WriteCall(SqxPrimitive::INIT_COLOR,
              {Text(code->m_dest), Text(code->m_r), Text(code->m_g), Text(code->m_b)});
}

void SlcCStatements::Case(SlcPtr<SlcMatrixICode> code)
{
    Texts texts{Text(code->m_dest)};
    for (const SlcOperand& value : code->m_values)
        texts.push_back(Text(value));
    WriteCall(SqxPrimitive::INIT_MATRIX, texts);
}

void SlcCStatements::Case(SlcPtr<SlcArrayRefICode> code)
{
    // Later accesses through the reference depend on whether it points to a single value.
    m_values.BindRef(code->m_result, code->m_array);
    Line(m_values.GetStringRef(code->m_result), " = ",
         m_values.GetStringArray(code->m_array, code->m_index), ";");
}

void SlcCStatements::Case(SlcPtr<SlcCheckValidArrayIndexICode> code)
{
    const std::string index = Text(code->m_index);
    Line("{");
    Line("\tif (int(", index, ") < 0 || (int(", index, ") >= ", code->m_size, ")) {");
    Line("\tReportBadArrayIndexError(__FILE__, __LINE__, ", Text(code->m_fileName), ", ",
         code->m_line, ", ", Text(code->m_arrayName), ", ", index, ");");
    Line("\t}}");
}

// Flags, over the whole grid.

void SlcCStatements::Case(SlcPtr<SlcSetUniformBoolFlagICode> code)
{
    if (m_inPointLoop)
        Line("any_", code->m_dest->GetName(), " |= BOOL_IS_TRUE(", Text(code->m_source), ");");
    else
        WriteCall(SqxPrimitive::SET_UNIFORM_BOOL_FLAG, GridTexts({code->m_dest, code->m_source}));
}

void SlcCStatements::Case(SlcPtr<SlcInvertBoolFlagICode> code)
{
    if (m_inPointLoop)
        Line("ASSIGN_BOOL_BOOL(", Text(code->m_dest), ", ",
             code->m_outer ? "BOOL_IS_TRUE(" + Text(code->m_outer) + ") & " : "", "BOOL_IS_FALSE(",
             Text(code->m_source), "));");
    else if (code->m_outer.Null())
        WriteCall(SqxPrimitive::INVERT_BOOL_FLAG, GridTexts({code->m_dest, code->m_source}));
    else
        WriteCall(SqxPrimitive::INVERT_INNER_BOOL_FLAG,
                  GridTexts({code->m_dest, code->m_source, code->m_outer}));
}

void SlcCStatements::Case(SlcPtr<SlcOrBoolFlagICode> code)
{
    if (m_inPointLoop)
        Line("ASSIGN_BOOL_BOOL(", Text(code->m_dest), ", BOOL_IS_TRUE(", Text(code->m_left),
             ") | BOOL_IS_TRUE(", Text(code->m_right), "));");
    else
        WriteCall(SqxPrimitive::OR_BOOL_FLAG,
                  GridTexts({code->m_dest, code->m_left, code->m_right}));
}
