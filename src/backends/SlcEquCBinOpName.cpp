// The name of an operation: a root, such as ADD for `a + b`, and a word for the type of each
// operand, such as ADD_FLOAT_COLOR for a float and a color. The point family has one word, since
// the operations on its members are the same.
//
// Tested by tests/backends/ByteCodeTableTest.cpp.

#include "backends/SlcEquCBinOpName.h"

#include "backends/SlcPrimitiveNames.h"
#include "icode/SlcICodeName.h"
#include "icode/SlcICodes.h"
#include "support/SlcDiagnostics.h"

namespace {

constexpr std::size_t k_longestName = 30;  // an estimate for `reserve`

/// Returns the root and, for each operand, the word for its type, if there is one.
std::string Named(std::string_view root, std::initializer_list<const SlcOperand*> operands)
{
    std::string name;
    name.reserve(k_longestName);
    name += root;
    for (const SlcOperand* operand : operands)
        if (const std::string_view word = SlcTypeWord((*operand)->GetType()); !word.empty())
            name.append(1, '_').append(word);
    return name;
}

}  // namespace

std::string SlcEquCBinOpName::GetString(const SlcPtr<SlcArithExprICode>& code)
{
    code->ApplyWalker(this);
    return Named(m_root, {&code->m_leftExpr, &code->m_rightExpr});
}

std::string SlcEquCBinOpName::GetString(const SlcPtr<SlcAssignICode>& code)
{
    return Named("ASSIGN", {&code->m_dest, &code->m_source});
}

std::string SlcEquCBinOpName::GetString(const SlcPtr<SlcUnaryMinusICode>& code)
{
    if (m_invert == Invert::DestAndSource)
        return Named("INVERT", {&code->m_dest, &code->m_source});
    return Named("INVERT", {&code->m_source});
}

std::string SlcEquCBinOpName::GetString(const SlcPtr<SlcBinOpBoolExprICode>& code)
{
    code->ApplyWalker(this);
    return Named(m_root, {&code->m_leftExpr, &code->m_rightExpr});
}

void SlcEquCBinOpName::Default(SlcPtr<SlcICode> code)
{
    FatalError("No operator name for " + std::string(SlcICodeName(*code)) +
               " (in SlcEquCBinOpName)");
}
