#pragma once

// Access to the details of nodes and variables. The inline detail is that in the call whose body
// `SlcCheckInlineDetail` is evaluating; the other details are the same for all calls.

#include "frontend/SlcExprNodes.h"
#include "frontend/SlcLValueNodes.h"
#include "symbols/SlcPossibleTypes.h"
#include "symbols/SlcSymbolEntry.h"

/// Returns the detail that `SlcCheckDetail` has stored: unknown if it depends on the call.
[[nodiscard]] inline SlcDetailNode* SlcFirstDetailOf(const SlcExprNode* expr)
{
    return SlcPossibleTypes::Of(expr)->GetDetail();
}

/// Returns the detail that the last visit of an evaluation has stored; unknown before the first.
[[nodiscard]] inline SlcDetailNode* SlcInlineDetailOf(const SlcExprNode* expr)
{
    return SlcPossibleTypes::Of(expr)->GetInlineDetail();
}

/// Does the same for the left side of an assignment.
[[nodiscard]] inline SlcDetailNode* SlcInlineDetailOf(const SlcLValueNode* lvalue)
{
    return CheckCast<SlcLValueType>(lvalue->GetAnnotation())->GetInlineDetail();
}

/// Sets the detail for the current call; the next evaluation of the body sets it again.
inline void SlcSetInlineDetail(SlcExprNode* expr, SlcDetailNode* detail)
{
    SlcPossibleTypes::Of(expr)->SetInlineDetail(detail);
}

/// Does the same for the left side of an assignment.
inline void SlcSetInlineDetail(SlcLValueNode* lvalue, SlcDetailNode* detail)
{
    CheckCast<SlcLValueType>(lvalue->GetAnnotation())->SetInlineDetail(detail);
}

/// Sets the inline detail to that of `SlcCheckDetail` or, if that is unknown, to `detail`.
inline void SlcSetInlineDetailIfUnknown(SlcExprNode* expr, SlcDetailNode* detail)
{
    SlcDetailNode* first = SlcFirstDetailOf(expr);
    SlcSetInlineDetail(expr, first->IsUnknownDetail() ? detail : first);
}

/// Returns the declared or default detail: unknown for a formal or local of a function that is
/// declared without one, and for a null entry, as after a report.
[[nodiscard]] inline SlcDetailNode* SlcDeclaredDetail(const SlcPtr<SlcVarSymbolEntry>& variable)
{
    return variable ? variable->GetDetail() : SlcDetailNode::AUnknown();
}

/// Returns the declared or default detail or, if that is unknown, the detail in the current call.
/// Unknown for a null entry, and for a variable that no evaluation has set yet.
[[nodiscard]] inline SlcDetailNode* SlcEffectiveDetail(const SlcPtr<SlcVarSymbolEntry>& variable)
{
    if (variable.Null())
        return SlcDetailNode::AUnknown();
    if (!variable->GetDetail()->IsUnknownDetail())
        return variable->GetDetail();
    SlcDetailNode* detail = variable->GetInlineDetail();
    return detail ? detail : SlcDetailNode::AUnknown();
}
