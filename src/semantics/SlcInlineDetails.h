#pragma once

// The details of nodes and variables for the call that is being evaluated.

#include "frontend/SlcExprNodes.h"
#include "frontend/SlcLValueNodes.h"
#include "symbols/SlcPossibleTypes.h"
#include "symbols/SlcSymbolEntry.h"

/// The detail that the pass over the statement as written has stored.
[[nodiscard]] inline SlcDetailNode* SlcFirstDetailOf(const SlcExprNode* expr)
{
    return SlcPossibleTypes::Of(expr)->GetDetail();
}

/// In the call that is being evaluated; null before it has been met there.
[[nodiscard]] inline SlcDetailNode* SlcInlineDetailOf(const SlcExprNode* expr)
{
    return SlcPossibleTypes::Of(expr)->GetInlineDetail();
}

/// The same of what an assignment writes to.
[[nodiscard]] inline SlcDetailNode* SlcInlineDetailOf(const SlcLValueNode* lvalue)
{
    return CheckCast<SlcLValueType>(lvalue->GetAnnotation())->GetInlineDetail();
}

/// For the current call; the next evaluation of the body sets it again.
inline void SlcSetInlineDetail(SlcExprNode* expr, SlcDetailNode* detail)
{
    SlcPossibleTypes::Of(expr)->SetInlineDetail(detail);
}

inline void SlcSetInlineDetail(SlcLValueNode* lvalue, SlcDetailNode* detail)
{
    CheckCast<SlcLValueType>(lvalue->GetAnnotation())->SetInlineDetail(detail);
}

/// `detail` where the statement as written leaves the detail open.
inline void SlcSetInlineDetailIfUnknown(SlcExprNode* expr, SlcDetailNode* detail)
{
    SlcDetailNode* first = SlcFirstDetailOf(expr);
    SlcSetInlineDetail(expr, first->IsUnknownDetail() ? detail : first);
}

/// The entry is null after a report.
[[nodiscard]] inline SlcDetailNode* SlcDeclaredDetail(const SlcPtr<SlcVarSymbolEntry>& variable)
{
    return variable ? variable->GetDetail() : SlcDetailNode::AUnknown();
}

/// The declared detail; if the declaration leaves it open, the detail in the current call.
[[nodiscard]] inline SlcDetailNode* SlcEffectiveDetail(const SlcPtr<SlcVarSymbolEntry>& variable)
{
    if (variable.Null())
        return SlcDetailNode::AUnknown();
    if (!variable->GetDetail()->IsUnknownDetail())
        return variable->GetDetail();
    SlcDetailNode* detail = variable->GetInlineDetail();
    return detail ? detail : SlcDetailNode::AUnknown();
}
