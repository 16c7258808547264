// Computes the details of expressions inside a function for one call. An expression keeps the
// detail from SlcCheckDetail if that is known. Otherwise it combines the details of its parts, or,
// as a call, has the detail that its rule returns. An assignment has at least the declared detail
// of its target, open if there is none, and records it for the variable. The condition of `?:`
// guards its branches like that of an `if`.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp.

#include <utility>

#include "frontend/SlcNodes.h"
#include "semantics/SlcCheckInlineDetail.h"
#include "semantics/SlcInlineDetails.h"
#include "semantics/SlcLeftSpine.h"
#include "symbols/SlcFuncSymbolEntry.h"

void SlcCheckInlineDetail::Case(SlcConstExprNode* node)
{
    SlcSetInlineDetail(node, SlcFirstDetailOf(node));
}

void SlcCheckInlineDetail::Case(SlcIdentExprNode* node)
{
    SlcSetInlineDetail(node, SlcEffectiveDetail(node->GetSymbolEntry()));
}

void SlcCheckInlineDetail::Case(SlcArrayRefExprNode* node)
{
    node->WalkIn(this);
    SlcSetInlineDetail(node, SlcDetailNode::Combine(SlcEffectiveDetail(node->GetSymbolEntry()),
                                                    SlcInlineDetailOf(node->GetIndex())));
}

void SlcCheckInlineDetail::Case(SlcIdentLValueNode* node)
{
    SlcSetInlineDetail(node, SlcDeclaredDetail(node->GetSymbolEntry()));
}

void SlcCheckInlineDetail::Case(SlcArrayRefLValueNode* node)
{
    node->WalkIn(this);
    SlcSetInlineDetail(node, SlcDetailNode::Combine(SlcDeclaredDetail(node->GetSymbolEntry()),
                                                    SlcInlineDetailOf(node->GetIndex())));
}

void SlcCheckInlineDetail::Case(SlcAssignExprNode* node)
{
    SlcLValueNode* lvalue = node->GetLValue();
    lvalue->ApplyWalker(this);
    SlcDetailNode* const target = SlcInlineDetailOf(lvalue);
    SlcDetailNode* const expected = std::exchange(m_place.wanted, target);
    node->GetValue()->ApplyWalker(this);
    m_place.wanted = expected;

    SlcDetailNode* const detail =
        SlcDetailNode::Combine(SlcInlineDetailOf(node->GetValue()), target);
    Written(lvalue->GetSymbolEntry(), detail,
            lvalue->IsIdentLValue() ? Extent::Whole : Extent::Part);
    SlcSetInlineDetail(node, detail);
}

void SlcCheckInlineDetail::Case(SlcCastExprNode* node)
{
    node->GetOperand()->ApplyWalker(this);
    SlcSetInlineDetailIfUnknown(node, SlcInlineDetailOf(node->GetOperand()));
}

void SlcCheckInlineDetail::Case(SlcUMinusExprNode* node)
{
    node->GetOperand()->ApplyWalker(this);
    SlcSetInlineDetailIfUnknown(node, SlcInlineDetailOf(node->GetOperand()));
}

template <class Elements>
SlcDetailNode* SlcCheckInlineDetail::WalkElements(const Elements& elements)
{
    SlcDetailNode* detail = SlcDetailNode::AUniform();
    for (const auto& element : elements) {
        element->ApplyWalker(this);
        detail = SlcDetailNode::Combine(detail, SlcInlineDetailOf(element.get()));
    }
    return detail;
}

void SlcCheckInlineDetail::Case(SlcPointExprNode* node)
{
    SlcSetInlineDetailIfUnknown(node, WalkElements(node->GetCoordinates()));
}

void SlcCheckInlineDetail::Case(SlcMatrixExprNode* node)
{
    SlcSetInlineDetailIfUnknown(node, WalkElements(node->GetValues()));
}

void SlcCheckInlineDetail::Case(SlcArrayExprNode* node)
{
    SlcSetInlineDetail(node, WalkElements(node->GetExprs()));
}

void SlcCheckInlineDetail::Case(SlcBinOpExprNode* node)
{
    const SlcLeftSpine chain(node);
    chain.first->ApplyWalker(this);
    for (auto link = chain.operations.rbegin(); link != chain.operations.rend(); ++link) {
        SlcBinOpExprNode* const operation = *link;
        operation->GetRight()->ApplyWalker(this);
        SlcSetInlineDetailIfUnknown(
            operation, SlcDetailNode::Combine(SlcInlineDetailOf(operation->GetLeft()),
                                              SlcInlineDetailOf(operation->GetRight())));
    }
}

/// Walks the parts even if the detail is already known, since they may contain calls.
void SlcCheckInlineDetail::Case(SlcCondExprNode* node)
{
    SlcDetailNode* const condition = WalkCondition(node->GetCondition());
    WalkGuarded(node->GetThen(), condition);
    WalkGuarded(node->GetElse(), condition);
    SlcDetailNode* const branches = SlcDetailNode::Combine(SlcInlineDetailOf(node->GetThen()),
                                                           SlcInlineDetailOf(node->GetElse()));
    SlcSetInlineDetailIfUnknown(node, SlcDetailNode::Combine(condition, branches));
}

void SlcCheckInlineDetail::Case(SlcCompOpNode* node)
{
    node->WalkIn(this);
    m_condition = SlcDetailNode::Combine(
        m_condition, SlcDetailNode::Combine(SlcInlineDetailOf(node->GetLeft()),
                                            SlcInlineDetailOf(node->GetRight())));
}

/// The left side guards the right one (short circuit).
void SlcCheckInlineDetail::Case(SlcLogOpNode* node)
{
    node->GetLeft()->ApplyWalker(this);
    WalkGuarded(node->GetRight(), m_condition);
}

void SlcCheckInlineDetail::Case(SlcProcCallExprNode* node)
{
    node->WalkIn(this);
    const auto& entry = node->GetSymbolEntry();
    if (entry)
        SlcSetInlineDetailIfUnknown(node, entry->CheckInlineDetail(this, node));
    else
        SlcSetInlineDetail(node, SlcDetailNode::AUniform());
}

/// Walks the arguments, since they may contain calls.
void SlcCheckInlineDetail::Case(SlcTextureExprNode* node)
{
    node->WalkIn(this);
    SlcSetInlineDetail(node, SlcDetailNode::AVarying());
}
