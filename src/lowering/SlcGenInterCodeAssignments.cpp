// Lowers assignments, which are expressions. Braces enclose a parallel run:
//
//     x = a + b         { x = a + b }                   computed in place: `EvaluateInto`
//     x += y            { x = x + y }
//     w[i] = v          { R = &w[i]; R = v }            varying i, which is evaluated before v
//     y = (w[i] = v)    { R = &w[i]; R = v; T = R }     a copy: R is valid only in its block
//
// The value of an assignment is rarely used. An unused value is not copied: the lowering of a
// statement sets `m_valueUnused` before it walks an assignment whose value is not used.
//
// Tested by tests/lowering/SlcGenInterCodeTest.cpp and SlcElementsTest.cpp.

#include <utility>

#include "lowering/SlcGenInterCode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcGeneratedNames.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

/// Strings and whole arrays have no whole-grid assignment.
bool HasSIMDAssignment(const SlcTypeNode* type)
{
    return !type->IsArrayType() &&
           (type->IsBoolType() || type->IsFloatType() || type->IsColorType() ||
            type->IsPointType() || type->IsMatrixType());
}

/// The run time stores only one value of `du` and one of `dv` for the whole grid, so the whole-grid
/// assignment, which reads a value for each point, cannot read them.
bool IsPartialDerivativeStep(const SlcOperand& operand)
{
    const std::string& name = operand->GetName();
    return name == SlcGeneratedNames::k_du || name == SlcGeneratedNames::k_dv;
}

}  // namespace

void SlcGenInterCode::Case(SlcEqAssignExprNode* node)
{
    const bool valueUsed = !std::exchange(m_valueUnused, false);
    const Target target = GenTarget(node);
    if (target.array) {
        GenElementAssignment(node, target.array, valueUsed);
        return;
    }
    const SlcOperand value = EvaluateInto(node->GetValue(), target.variable);
    GenAssignment(target.variable, value);
    m_values.Push(target.variable);
    m_context.NoteAssigned(target.variable);
}

void SlcGenInterCode::Case(SlcAssignExprNode* node)
{
    const bool valueUsed = !std::exchange(m_valueUnused, false);
    const Target target = GenTarget(node);
    if (target.array) {
        GenElementAssignment(node, target.array, valueUsed);
        return;
    }
    GenArithAssignment(node, target.variable, Evaluate(node->GetValue()));
    m_values.Push(target.variable);
    m_context.NoteAssigned(target.variable);
}

SlcGenInterCode::Target SlcGenInterCode::GenTarget(SlcAssignExprNode* node)
{
    SlcLValueNode* lvalue = node->GetLValue();
    const SlcOperand variable = m_context.OperandOf(lvalue->GetSymbolEntry());
    if (lvalue->IsIdentLValue())
        return {variable, nullptr};
    auto* element = static_cast<SlcArrayRefLValueNode*>(lvalue);
    element->GetIndex()->ApplyWalker(this);
    if (variable->IsUniform() && !node->IsEqAssign())
        m_values.Push(UniformValue(m_values.Pop()));
    if (!m_values.Last()->IsUniform())
        return {nullptr, variable};
    const SlcOperand index = m_values.Pop();
    m_elements.GenIndexCheck(lvalue, lvalue->GetIdent()->GetName(), variable, index);
    return {m_elements.GenElementRef(variable, index, variable->GetDetail()), nullptr};
}

SlcOperand SlcGenInterCode::EvaluateInto(SlcExprNode* expr, const SlcOperand& target)
{
    const auto types = SlcPossibleTypes::Of(expr);
    // In the right side of `||`, a whole-grid form might also write points that do not evaluate
    // that side.
    if (types.Null() || !m_options.m_assignInPlace || m_conditions.IsInsideBoolExpr())
        return Evaluate(expr);
    types->SetOperandHint(target);
    expr->ApplyWalker(this);
    types->SetOperandHint(nullptr);
    return m_values.Pop();
}

void SlcGenInterCode::GenAssignment(const SlcOperand& lhs, const SlcOperand& rhs)
{
    if (lhs == rhs)
        return;
    const bool simd = m_options.m_simdInstructions && !m_conditions.IsInParallelIf() &&
                      !m_conditions.IsInsideBoolExpr() && !lhs->IsUniform() && !rhs->IsUniform() &&
                      lhs->GetType()->IsSameType(rhs->GetType()) &&
                      HasSIMDAssignment(lhs->GetType()) && !IsPartialDerivativeStep(rhs);
    if (simd)
        m_list.AddICode(MakeShared<SlcAssignSIMDICode>(lhs, rhs));
    else
        m_conditions.GenPlainAssignment(lhs, rhs);
}

void SlcGenInterCode::GenArithAssignment(SlcAssignExprNode* node, const SlcOperand& lhs,
                                         SlcOperand rhs)
{
    SlcOperand target = lhs;
    m_context.MatchColors(target, rhs);
    if (lhs->IsUniform())
        rhs = UniformValue(rhs);
    m_conditions.AddInBlock(SlcConditions::UniformIfAll({lhs, rhs}),
                            MakeAssignICode(node, target, lhs, rhs));
}

SlcOperand SlcGenInterCode::UniformValue(const SlcOperand& value)
{
    if (value->IsUniform())
        return value;
    SlcOperand copy = m_list.GenTempVar(SlcElements::ValueType(value), SlcDetailNode::AUniform());
    m_conditions.GenPlainAssignment(copy, value);
    return copy;
}

void SlcGenInterCode::GenElementAssignment(SlcAssignExprNode* node, const SlcOperand& array,
                                           bool valueUsed)
{
    SlcOperand value = Evaluate(node->GetValue());
    const SlcOperand index = m_values.Pop();
    SlcTypeNode* type = static_cast<SlcArrayTypeNode*>(array->GetType())->GetElementType();
    if (type->IsColorType() && value->GetType()->IsPointType())
        value = m_context.Converted(value, type);
    SlcLValueNode* lvalue = node->GetLValue();
    m_elements.GenIndexCheck(lvalue, lvalue->GetIdent()->GetName(), array, index);

    SlcDetailNode* varying = SlcDetailNode::AVarying();
    m_conditions.AddBeginBlock(varying);
    const SlcOperand element = m_elements.GenElementRef(array, index, varying);
    m_list.AddICode(MakeAssignICode(node, element, element, value));
    if (valueUsed) {
        value = m_list.GenTempVar(type, varying);
        m_list.AddICode(MakeShared<SlcAssignICode>(value, element));
    }
    m_conditions.AddEndBlock(varying);
    if (valueUsed)
        m_elements.RememberCopy(value, array, index);
    m_values.Push(value);
}

SlcPtr<SlcICode> SlcGenInterCode::MakeAssignICode(SlcAssignExprNode* node, const SlcOperand& dest,
                                                  const SlcOperand& left, const SlcOperand& right)
{
    if (node->IsEqAssign())
        return MakeShared<SlcAssignICode>(dest, right);
    if (node->IsAddEqAssign())
        return MakeShared<SlcAddICode>(dest, left, right);
    if (node->IsSubEqAssign())
        return MakeShared<SlcSubICode>(dest, left, right);
    if (node->IsMultEqAssign())
        return MakeShared<SlcMultICode>(dest, left, right);
    if (node->IsDivEqAssign())
        return MakeShared<SlcDivICode>(dest, left, right);
    m_errors->FatalError(node,
                         "Invalid expression for assignment expression while generating i-code");
}
