// A wanted type that the set does not hold becomes one of the set, so that every node has a type
// that its own rule can work with. Float comes before the first of the set, since it is promoted.

#include "semantics/SlcTypedExpr.h"

SlcTypeNode* SlcTypedExpr::SettleWanted(const SlcExprNode* expr)
{
    if (IsUntyped(expr))
        return nullptr;
    const auto types = SlcPossibleTypes::Of(expr);
    // After a fault no type is better than another, so that nothing is chosen for its sake.
    SlcTypeNode* wanted = IsFaulty(expr) ? SlcTypeNode::AError() : types->GetUniqueType();
    if (!wanted->IsErrorType() && types->IsInTypes(wanted, false))
        return wanted;
    const bool isPromoted = !wanted->IsErrorType() && HasType(expr, SlcTypeNode::AFloat()) &&
                            SlcTypeNode::AFloat()->IsPromotableAs(wanted);
    types->SetUniqueType(isPromoted ? SlcTypeNode::AFloat() : FirstType(expr));
    return types->GetUniqueType();
}
