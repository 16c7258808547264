#include "semantics/SlcCheckInlineDetail.h"

#include <utility>

#include "frontend/SlcNodes.h"
#include "semantics/SlcInlineDetails.h"
#include "semantics/SlcLeftSpine.h"
#include "symbols/SlcFuncSymbolEntry.h"

SlcCheckInlineDetail::SlcCheckInlineDetail(SlcPtr<SlcSemanticError> errors)
    : m_errors(std::move(errors))
{
}

SlcDetailNode* SlcCheckInlineDetail::operator()(SlcSyntaxNode* body, SlcShaderTypeNode* shaderType,
                                                bool inLightStatement, bool notInFunction,
                                                SlcDetailNode* wanted, int level)
{
    m_shaderType = shaderType;
    m_inLightStatement = inLightStatement;
    m_notInFunction = notInFunction;
    m_wanted = wanted;
    m_level = level;
    m_expected = nullptr;
    m_condition = SlcDetailNode::AUniform();
    m_guard = nullptr;
    m_result = nullptr;
    try {
        body->ApplyWalker(this);
    } catch (const EndCheckInline& end) {
        return end.detail;
    }
    return m_result ? m_result : SlcDetailNode::AVarying();
}

SlcDetailNode* SlcCheckInlineDetail::DetailOfWrite(const SlcPtr<SlcVarSymbolEntry>& variable,
                                                   SlcDetailNode* written) const
{
    if (!m_guard)
        return written;
    return SlcDetailNode::Combine(SlcDetailNode::Combine(written, m_guard),
                                  SlcEffectiveDetail(variable));
}

void SlcCheckInlineDetail::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}

void SlcCheckInlineDetail::Case(SlcExprNode* node)
{
    node->WalkIn(this);
    m_errors->FatalError(node, "Expression not treated by inlining");
}

void SlcCheckInlineDetail::Case(SlcFuncDefStmtNode*)
{
    // A nested function is evaluated where it is called.
}

void SlcCheckInlineDetail::Case(SlcDefExprNode* node)
{
    SlcExprNode* initializer = node->GetInitializer();
    if (initializer)
        initializer->ApplyWalker(this);
    const auto& entry = node->GetSymbolEntry();
    if (entry.Null()) {
        m_errors->Warning(node, "Def expr id not found during inline expansion of function",
                          node->GetIdent()->GetName(), 1);
        return;
    }
    SlcDetailNode* detail = entry->GetDetail();
    if (detail->IsUnknownDetail() && initializer)
        detail = SlcInlineDetailOf(initializer);
    else if (detail->IsUnknownDetail() && entry->GetStorage()->IsExtern())
        detail = SlcDetailNode::AVarying();
    entry->SetInlineDetail(detail);
}

/// One `return` is allowed, wherever it stands. One at the top of the body ends it; behind one
/// under a condition the body goes on for the points that did not return, which have another
/// result.
void SlcCheckInlineDetail::Case(SlcReturnStmtNode* node)
{
    SlcDetailNode* const expected = std::exchange(m_expected, m_wanted);
    node->GetValue()->ApplyWalker(this);
    m_expected = expected;
    SlcDetailNode* detail = SlcInlineDetailOf(node->GetValue());
    if (!m_guard)
        throw EndCheckInline{detail};
    if (!m_result)
        m_result = SlcDetailNode::Combine(detail, m_guard);
}

SlcDetailNode* SlcCheckInlineDetail::WalkCondition(SlcSyntaxNode* condition)
{
    SlcDetailNode* const outer = std::exchange(m_condition, SlcDetailNode::AUniform());
    condition->ApplyWalker(this);
    return std::exchange(m_condition, outer);
}

void SlcCheckInlineDetail::WalkGuarded(SlcSyntaxNode* node, SlcDetailNode* guard)
{
    SlcDetailNode* const outer = m_guard;
    m_guard = outer ? SlcDetailNode::Combine(outer, guard) : guard;
    node->ApplyWalker(this);
    m_guard = outer;
}

void SlcCheckInlineDetail::Case(SlcIfThenStmtNode* node)
{
    WalkGuarded(node->GetThen(), WalkCondition(node->GetCondition()));
}

void SlcCheckInlineDetail::Case(SlcIfThenElseStmtNode* node)
{
    SlcDetailNode* const condition = WalkCondition(node->GetCondition());
    WalkGuarded(node->GetThen(), condition);
    WalkGuarded(node->GetElse(), condition);
}

void SlcCheckInlineDetail::Case(SlcLoopStmtNode* node)
{
    SlcDetailNode* const outer = std::exchange(m_guard, SlcDetailNode::AVarying());
    node->WalkIn(this);
    m_guard = outer;
}

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
    SlcDetailNode* const expected = std::exchange(m_expected, target);
    node->GetValue()->ApplyWalker(this);
    m_expected = expected;

    SlcDetailNode* const detail =
        SlcDetailNode::Combine(SlcInlineDetailOf(node->GetValue()), target);
    const auto& entry = lvalue->GetSymbolEntry();
    if (entry && entry->GetDetail()->IsUnknownDetail())
        entry->SetInlineDetail(detail);
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

/// Walked also when its detail is known, for the calls in it.
void SlcCheckInlineDetail::Case(SlcCondExprNode* node)
{
    SlcDetailNode* const condition = WalkCondition(node->GetCondition());
    node->GetThen()->ApplyWalker(this);
    node->GetElse()->ApplyWalker(this);
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

void SlcCheckInlineDetail::Case(SlcProcCallExprNode* node)
{
    node->WalkIn(this);
    const auto& entry = node->GetSymbolEntry();
    if (entry)
        SlcSetInlineDetailIfUnknown(node, entry->CheckInlineDetail(this, node));
    else
        SlcSetInlineDetail(node, SlcDetailNode::AUniform());
}

/// Walked for the calls in it.
void SlcCheckInlineDetail::Case(SlcTextureExprNode* node)
{
    node->WalkIn(this);
    SlcSetInlineDetail(node, SlcDetailNode::AVarying());
}
