// Only numbers in the head of the loop count: the start and the bound in `for (i = 0; i < 3; ...)`,
// optionally negated. For any other condition the result is false.
//
// Tested by tests/semantics/SlcCheckUsageTest.cpp.

#include "semantics/SlcRunsAtLeastOnce.h"

#include <optional>

#include "frontend/SlcNodes.h"
#include "symbols/SlcSymbolEntry.h"

namespace {

std::optional<double> NumberOf(const SlcExprNode* expr)
{
    if (const auto* minus = dynamic_cast<const SlcUMinusExprNode*>(expr)) {
        const auto number = NumberOf(minus->GetOperand());
        return number ? std::optional<double>(-*number) : std::nullopt;
    }
    const auto* constant = dynamic_cast<const SlcConstExprNode*>(expr);
    if (!constant || !constant->IsFloat())
        return std::nullopt;
    return constant->GetFloatConst()->GetValue();
}

/// Returns the value of `expr` after `start`, the assignment before the first round, if `expr` is a
/// number or the variable that `start` sets to a number; otherwise nothing.
std::optional<double> FirstNumberOf(const SlcExprNode* expr, const SlcEqAssignExprNode& start)
{
    const auto* variable = dynamic_cast<const SlcIdentExprNode*>(expr);
    const bool isStarted = variable && start.GetLValue()->IsIdentLValue() &&
                           variable->GetSymbolEntry() == start.GetSymbolEntry();
    return NumberOf(isStarted ? start.GetValue() : expr);
}

bool IsTrue(const SlcCompOpNode& condition, double left, double right)
{
    return (condition.IsLessThen() && left < right) || (condition.IsLessEqual() && left <= right) ||
           (condition.IsGreaterThen() && left > right) ||
           (condition.IsGreaterEqual() && left >= right) ||
           (condition.IsEqual() && left == right) || (condition.IsNotEqual() && left != right);
}

}  // namespace

bool SlcRunsAtLeastOnce(const SlcForStmtNode* loop)
{
    const auto* start = dynamic_cast<const SlcEqAssignExprNode*>(loop->GetInit());
    const auto* condition = dynamic_cast<const SlcCompOpNode*>(loop->GetCondition());
    if (!start || !condition)
        return false;
    const auto left = FirstNumberOf(condition->GetLeft(), *start);
    const auto right = FirstNumberOf(condition->GetRight(), *start);
    return left && right && IsTrue(*condition, *left, *right);
}
