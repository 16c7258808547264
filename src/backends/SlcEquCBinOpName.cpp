// The name of an operation with its types: ADD for `a + b`, ADD_FLOAT_COLOR for a float and a
// color. The point family is one word, since its members are computed alike.
//
// Tested by tests/backends/ByteCodeTableTest.cpp.

#include "backends/SlcEquCBinOpName.h"

#include "icode/SlcICodeName.h"
#include "icode/SlcICodes.h"
#include "support/SlcDiagnostics.h"

namespace {

struct TypeSuffix {
    bool (SlcTypeNode::*test)() const;
    const char* suffix;
};

// A reference to an array's element answers these tests for the element.
constexpr TypeSuffix k_suffixes[] = {
    {&SlcTypeNode::IsBoolType, "_BOOL"},     {&SlcTypeNode::IsFloatType, "_FLOAT"},
    {&SlcTypeNode::IsStringType, "_STRING"}, {&SlcTypeNode::IsPointType, "_POINT"},
    {&SlcTypeNode::IsColorType, "_COLOR"},   {&SlcTypeNode::IsMatrixType, "_MATRIX"},
};

const char* SuffixOf(const SlcOperand& operand)
{
    for (const TypeSuffix& row : k_suffixes)
        if ((operand->GetType()->*row.test)())
            return row.suffix;
    return "";
}

}  // namespace

std::string SlcEquCBinOpName::GetString(const SlcPtr<SlcArithExprICode>& code)
{
    code->ApplyWalker(this);
    return std::string(m_root) + SuffixOf(code->m_leftExpr) + SuffixOf(code->m_rightExpr);
}

std::string SlcEquCBinOpName::GetString(const SlcPtr<SlcAssignICode>& code)
{
    return std::string("ASSIGN") + SuffixOf(code->m_dest) + SuffixOf(code->m_source);
}

std::string SlcEquCBinOpName::GetString(const SlcPtr<SlcUnaryMinusICode>& code)
{
    const char* dest = m_invert == Invert::DestAndSource ? SuffixOf(code->m_dest) : "";
    return std::string("INVERT") + dest + SuffixOf(code->m_source);
}

std::string SlcEquCBinOpName::GetString(const SlcPtr<SlcBinOpBoolExprICode>& code)
{
    code->ApplyWalker(this);
    return std::string(m_root) + SuffixOf(code->m_leftExpr) + SuffixOf(code->m_rightExpr);
}

void SlcEquCBinOpName::Default(SlcPtr<SlcICode> code)
{
    FatalError("No operator name for " + std::string(SlcICodeName(*code)) +
               " (in SlcEquCBinOpName)");
}
