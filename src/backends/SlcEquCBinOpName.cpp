// The name of an operation with its types: ADD for `a + b`, ADD_FLOAT_COLOR for a float and a
// color. The point family is one word, since its members are computed alike.
//
// Tested by tests/backends/ByteCodeTableTest.cpp.

#include "backends/SlcEquCBinOpName.h"

#include "backends/SlcPrimitiveNames.h"
#include "icode/SlcICodeName.h"
#include "icode/SlcICodes.h"
#include "support/SlcDiagnostics.h"

namespace {

std::string SuffixOf(const SlcOperand& operand)
{
    const std::string_view word = SlcTypeWord(operand->GetType());
    return word.empty() ? std::string() : std::string("_").append(word);
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
    const std::string dest =
        m_invert == Invert::DestAndSource ? SuffixOf(code->m_dest) : std::string();
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
