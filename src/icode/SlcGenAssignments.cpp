// Assignments as expressions.

#include <utility>

#include "icode/SlcGenInterCode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcGeneratedNames.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

/// Strings, for one, have no assignment for the whole grid.
bool HasSIMDAssignment(const SlcTypeNode* type)
{
    return !type->IsArrayType() &&
           (type->IsBoolType() || type->IsFloatType() || type->IsColorType() ||
            type->IsPointType() || type->IsMatrixType());
}

/// Their size differs from that of other predefined variables at run time.
bool IsPartialDerivativeStep(const SlcOperand& operand)
{
    const std::string& name = operand->GetName();
    return name == SlcGeneratedNames::k_du || name == SlcGeneratedNames::k_dv;
}

SlcDetailNode* BlockDetail(const SlcOperand& lhs, const SlcOperand& rhs)
{
    return lhs->IsUniform() && rhs->IsUniform() ? SlcDetailNode::AUniform()
                                                : SlcDetailNode::AVarying();
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
    Push(target.variable);
    ResetEvalLightIfPAssigned(target.variable);
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
    Push(target.variable);
    ResetEvalLightIfPAssigned(target.variable);
}

SlcGenInterCode::Target SlcGenInterCode::GenTarget(SlcAssignExprNode* node)
{
    SlcLValueNode* lvalue = node->GetLValue();
    const SlcOperand variable = OperandOf(lvalue->GetSymbolEntry());
    if (lvalue->IsIdentLValue())
        return {variable, nullptr};
    auto* element = static_cast<SlcArrayRefLValueNode*>(lvalue);
    element->GetIndex()->ApplyWalker(this);
    if (variable->IsUniform() && !node->IsEqAssign())
        Push(UniformValue(Pop()));
    if (!m_values.back().operand->IsUniform())
        return {nullptr, variable};
    const SlcOperand index = Pop();
    GenIndexCheck(lvalue, lvalue->GetIdent(), variable, index);
    return {GenElementRef(variable, index, variable->GetDetail()), nullptr};
}

SlcOperand SlcGenInterCode::EvaluateInto(SlcExprNode* expr, const SlcOperand& target)
{
    const auto types = SlcPossibleTypes::Of(expr);
    // In the right side of a logical operator, forms for the whole grid would also touch points
    // that do not get there.
    if (types.Null() || !m_options.m_assignInPlace || IsInsideBoolExpr())
        return Evaluate(expr);
    types->SetOperandHint(target);
    expr->ApplyWalker(this);
    types->SetOperandHint(nullptr);
    return Pop();
}

void SlcGenInterCode::GenAssignment(const SlcOperand& lhs, const SlcOperand& rhs)
{
    if (lhs == rhs)
        return;
    const bool simd = m_options.m_simdInstructions && !IsInParallelIf() && !IsInsideBoolExpr() &&
                      !lhs->IsUniform() && !rhs->IsUniform() &&
                      lhs->GetType()->IsSameType(rhs->GetType()) &&
                      HasSIMDAssignment(lhs->GetType()) && !IsPartialDerivativeStep(rhs);
    if (simd)
        AddICode(MakeShared<SlcAssignSIMDICode>(lhs, rhs));
    else
        GenPlainAssignment(lhs, rhs);
}

void SlcGenInterCode::GenPlainAssignment(const SlcOperand& lhs, const SlcOperand& rhs)
{
    AddInBlock(BlockDetail(lhs, rhs), MakeShared<SlcAssignICode>(lhs, rhs));
}

void SlcGenInterCode::GenArithAssignment(SlcAssignExprNode* node, const SlcOperand& lhs,
                                         SlcOperand rhs)
{
    SlcOperand target = lhs;
    MatchColors(target, rhs);
    if (lhs->IsUniform())
        rhs = UniformValue(rhs);
    AddInBlock(BlockDetail(lhs, rhs), MakeAssignICode(node, target, lhs, rhs));
}

SlcOperand SlcGenInterCode::UniformValue(const SlcOperand& value)
{
    if (value->IsUniform())
        return value;
    SlcOperand copy = GenTempVar(ValueType(value), SlcDetailNode::AUniform());
    GenPlainAssignment(copy, value);
    return copy;
}

/// The index is the last value on the stack.
void SlcGenInterCode::GenElementAssignment(SlcAssignExprNode* node, const SlcOperand& array,
                                           bool valueUsed)
{
    SlcOperand value = Evaluate(node->GetValue());
    const SlcOperand index = Pop();
    SlcTypeNode* type = static_cast<SlcArrayTypeNode*>(array->GetType())->GetElementType();
    if (type->IsColorType() && value->GetType()->IsPointType())
        value = Converted(value, type);
    SlcLValueNode* lvalue = node->GetLValue();
    GenIndexCheck(lvalue, lvalue->GetIdent(), array, index);

    SlcDetailNode* varying = SlcDetailNode::AVarying();
    AddBeginBlock(varying);
    const SlcOperand element = GenElementRef(array, index, varying);
    AddICode(MakeAssignICode(node, element, element, value));
    if (valueUsed) {
        value = GenTempVar(type, varying);
        AddICode(MakeShared<SlcAssignICode>(value, element));
    }
    AddEndBlock(varying);
    if (valueUsed)
        RememberCopy(value, array, index);
    Push(value);
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
