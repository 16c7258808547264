// A requested type that is not in the set is replaced by one of the set, so that every node has a
// type that its rule can handle. A float that can be promoted to the requested type takes
// precedence over the first type.

#include "semantics/SlcTypedExpr.h"

SlcTypeNode* SlcTypedExpr::ResolveRequestedType(const SlcExprNode* expr)
{
    if (IsUntyped(expr))
        return nullptr;
    const auto types = SlcPossibleTypes::Of(expr);
    // A faulty expression has only the error type, whatever type is requested.
    SlcTypeNode* wanted = IsFaulty(expr) ? SlcTypeNode::AError() : types->GetUniqueType();
    if (!wanted->IsErrorType() && types->IsInTypes(wanted, false))
        return wanted;
    const bool isPromoted = !wanted->IsErrorType() && HasType(expr, SlcTypeNode::AFloat()) &&
                            SlcTypeNode::AFloat()->IsPromotableAs(wanted);
    types->SetUniqueType(isPromoted ? SlcTypeNode::AFloat() : FirstType(expr));
    return types->GetUniqueType();
}
