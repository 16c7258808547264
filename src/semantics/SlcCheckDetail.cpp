// The detail of most expressions is the maximum of the details of their parts, in the order
// uniform, open (unknown), varying. A call has the detail that its rule returns, a texture access
// is varying, and an assignment has the detail of its target. In a function, a formal or local
// without a declared detail is open:
//
//     float f(float x) { return x * s; }      x is open, s varying: the product is varying
//     float g(float x) { return x + 1; }      open: its detail depends on the call
//
// An assignment requests the detail of its target from all calls on its right side, and a
// declaration that of its variable. Some calls, such as random(), adopt the requested detail; all
// other expressions ignore it.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp.

#include "semantics/SlcCheckDetail.h"

#include <utility>

#include "frontend/SlcNodes.h"
#include "semantics/SlcLeftSpine.h"
#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

SlcDetailNode* DetailOf(const SlcExprNode* expr)
{
    return SlcPossibleTypes::Of(expr)->GetDetail();
}

SlcDetailNode* DetailOf(const SlcLValueNode* lvalue)
{
    return CheckCast<SlcLValueType>(lvalue->GetAnnotation())->GetDetail();
}

void SetDetail(SlcExprNode* expr, SlcDetailNode* detail)
{
    SlcPossibleTypes::Of(expr)->SetDetail(detail);
}

void SetDetail(SlcLValueNode* lvalue, SlcDetailNode* detail)
{
    CheckCast<SlcLValueType>(lvalue->GetAnnotation())->SetDetail(detail);
}

/// Returns the declared detail; uniform for a variable that has been reported, so that no rule
/// reports it again.
SlcDetailNode* DetailOf(const SlcPtr<SlcVarSymbolEntry>& variable)
{
    if (variable.Null() || variable->GetType()->IsErrorType())
        return SlcDetailNode::AUniform();
    return variable->GetDetail();
}

/// True if the variable is uniform and has not been reported.
bool IsUniformVariable(const SlcPtr<SlcVarSymbolEntry>& variable)
{
    return variable && !variable->GetType()->IsErrorType() && variable->GetDetail()->IsUniform();
}

/// True for an output parameter of the shader that is a string or an array of strings.
bool IsStringParameter(const SlcVarSymbolEntry& variable, const SlcCallPlace& place)
{
    const auto* array = dynamic_cast<const SlcArrayTypeNode*>(variable.GetType());
    const SlcTypeNode* type = array ? array->GetElementType() : variable.GetType();
    return place.inShader && type->IsStringType() && variable.GetStorage()->IsOutput();
}

}  // namespace

void SlcAdviseOnOpenDetail(SlcSemanticError& errors, const SlcSyntaxNode* node,
                           const SlcDetailNode& detail, const SlcCallPlace& place)
{
    if (!detail.IsUnknownDetail())
        return;
    if (place.inShader)
        errors.Advise(node, "the value comes from locals without a declared detail: declare them "
                            "'uniform', and in functions also the formals that go into them");
    else
        errors.Advise(node, "the value is as varying as the arguments of the call: declare the "
                            "formals that it comes from 'uniform'");
}

SlcCheckDetail::SlcCheckDetail(SlcPtr<SlcSemanticError> errors) : m_errors(std::move(errors)) {}

void SlcCheckDetail::operator()(SlcSyntaxNode* node, const SlcCallPlace& place)
{
    m_place = place;
    m_condition = SlcDetailNode::AUniform();
    node->ApplyWalker(this);
}

void SlcCheckDetail::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}

void SlcCheckDetail::Case(SlcExprNode* node)
{
    node->WalkIn(this);
    m_errors->FatalError(node, "This expression is not yet checking detail");
}

void SlcCheckDetail::Case(SlcConstExprNode* node)
{
    SetDetail(node, SlcDetailNode::AUniform());
}

void SlcCheckDetail::Case(SlcIdentExprNode* node)
{
    SetDetail(node, DetailOf(node->GetSymbolEntry()));
}

void SlcCheckDetail::Case(SlcArrayRefExprNode* node)
{
    node->WalkIn(this);
    SetDetail(node,
              SlcDetailNode::Combine(DetailOf(node->GetSymbolEntry()), DetailOf(node->GetIndex())));
}

void SlcCheckDetail::Case(SlcIdentLValueNode* node)
{
    SetDetail(node, DetailOf(node->GetSymbolEntry()));
}

void SlcCheckDetail::Case(SlcArrayRefLValueNode* node)
{
    node->WalkIn(this);
    SetDetail(node,
              SlcDetailNode::Combine(DetailOf(node->GetSymbolEntry()), DetailOf(node->GetIndex())));
}

void SlcCheckDetail::Case(SlcAssignExprNode* node)
{
    SlcLValueNode* lvalue = node->GetLValue();
    lvalue->ApplyWalker(this);
    SlcDetailNode* const detail = DetailOf(lvalue);
    SlcDetailNode* const expected = std::exchange(m_place.wanted, detail);
    node->GetValue()->ApplyWalker(this);
    m_place.wanted = expected;

    // With an index that is not uniform, points can write different elements, but all points share
    // the elements of a uniform array.
    const SlcDetailNode* given = SlcDetailNode::Combine(detail, DetailOf(node->GetValue()));
    if (IsUniformVariable(lvalue->GetSymbolEntry()) && !given->IsUniform()) {
        m_errors->Error(node,
                        given->IsVarying() ? "Assignment detail mismatch (should be varying)"
                                           : "Assignment detail mismatch",
                        lvalue->ToString());
        SlcAdviseOnOpenDetail(*m_errors, node, *given, m_place);
        if (IsStringParameter(*lvalue->GetSymbolEntry(), m_place))
            m_errors->Advise(node, "a string parameter has one value for all points, also if it is "
                                   "declared 'varying': use a local variable");
    }
    SetDetail(node, detail);
}

void SlcCheckDetail::Case(SlcCastExprNode* node)
{
    node->GetOperand()->ApplyWalker(this);
    SetDetail(node, DetailOf(node->GetOperand()));
}

void SlcCheckDetail::Case(SlcUMinusExprNode* node)
{
    node->GetOperand()->ApplyWalker(this);
    SetDetail(node, DetailOf(node->GetOperand()));
}

template <class Node, class Elements>
void SlcCheckDetail::CombineElements(Node* node, const Elements& elements)
{
    SlcDetailNode* detail = SlcDetailNode::AUniform();
    for (const auto& element : elements) {
        element->ApplyWalker(this);
        detail = SlcDetailNode::Combine(detail, DetailOf(element.get()));
    }
    SetDetail(node, detail);
}

void SlcCheckDetail::Case(SlcPointExprNode* node)
{
    CombineElements(node, node->GetCoordinates());
}

void SlcCheckDetail::Case(SlcMatrixExprNode* node)
{
    CombineElements(node, node->GetValues());
}

void SlcCheckDetail::Case(SlcArrayExprNode* node)
{
    CombineElements(node, node->GetExprs());
}

void SlcCheckDetail::Case(SlcBinOpExprNode* node)
{
    const SlcLeftSpine chain(node);
    chain.first->ApplyWalker(this);
    for (auto link = chain.operations.rbegin(); link != chain.operations.rend(); ++link) {
        SlcBinOpExprNode* const operation = *link;
        operation->GetRight()->ApplyWalker(this);
        SetDetail(operation, SlcDetailNode::Combine(DetailOf(operation->GetLeft()),
                                                    DetailOf(operation->GetRight())));
    }
}

/// Under a varying condition the result is varying, even if both branches are uniform.
void SlcCheckDetail::Case(SlcCondExprNode* node)
{
    SlcDetailNode* const outer = std::exchange(m_condition, SlcDetailNode::AUniform());
    node->GetCondition()->ApplyWalker(this);
    SlcDetailNode* const condition = std::exchange(m_condition, outer);
    node->GetThen()->ApplyWalker(this);
    node->GetElse()->ApplyWalker(this);
    SetDetail(node,
              SlcDetailNode::Combine(condition, SlcDetailNode::Combine(DetailOf(node->GetThen()),
                                                                       DetailOf(node->GetElse()))));
}

void SlcCheckDetail::Case(SlcCompOpNode* node)
{
    node->WalkIn(this);
    m_condition = SlcDetailNode::Combine(
        m_condition, SlcDetailNode::Combine(DetailOf(node->GetLeft()), DetailOf(node->GetRight())));
}

void SlcCheckDetail::Case(SlcProcCallExprNode* node)
{
    node->WalkIn(this);
    const auto& entry = node->GetSymbolEntry();
    // A call without an entry has been reported.
    SetDetail(node, entry ? entry->CheckDetail(this, node) : SlcDetailNode::AUniform());
}

void SlcCheckDetail::Case(SlcTextureExprNode* node)
{
    node->WalkIn(this);
    SetDetail(node, SlcDetailNode::AVarying());
}
