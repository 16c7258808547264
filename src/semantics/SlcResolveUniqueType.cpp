// Selects the type of each part, top-down. Each `Case` determines the types of the operands, in
// most cases from the type of the node, and then visits the operands:
//
//     Ci = 2 * (noise(s) + (1, 0, 0))      a color is requested of the product and the sum, so the
//                                          triple is a color and noise has the overload for colors
//
// An argument whose formal accepts any type, as of printf, gets the first type of its set. If the
// requested type is not in the set, `ResolveRequestedType` selects another one.
//
// Tested by tests/semantics/SlcResolveUniqueTypeTest.cpp.

#include "semantics/SlcResolveUniqueType.h"

#include <string>
#include <utility>

#include "frontend/SlcNodes.h"
#include "semantics/SlcConstantArguments.h"
#include "semantics/SlcLeftSpine.h"
#include "semantics/SlcResolveCall.h"
#include "semantics/SlcResolveOperator.h"
#include "semantics/SlcResolveTexture.h"
#include "semantics/SlcTypedExpr.h"

using namespace SlcTypedExpr;
using T = SlcTypeNode;

namespace {

std::string Quoted(const SlcTypeNode* type)
{
    return "'" + type->ToString() + "'";
}

}  // namespace

SlcResolveUniqueType::SlcResolveUniqueType(SlcPtr<SlcSemanticError> errors)
    : m_errors(errors),
      m_operators(std::move(errors))
{
}

void SlcResolveUniqueType::operator()(SlcSyntaxNode* node, SlcPtr<SlcSymbolTable> scope,
                                      SlcShaderTypeNode* shaderType)
{
    m_scope = std::move(scope);
    m_shaderType = shaderType;
    node->ApplyWalker(this);
}

void SlcResolveUniqueType::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}

void SlcResolveUniqueType::Case(SlcAssignExprNode* assignment)
{
    ResolveAssignment(assignment);
    assignment->WalkIn(this);
}

void SlcResolveUniqueType::ResolveAssignment(SlcAssignExprNode* assignment)
{
    SlcExprNode* value = assignment->GetValue();
    SlcTypeNode* target =
        CheckCast<SlcLValueType>(assignment->GetLValue()->GetAnnotation())->GetType();
    const bool refused = FirstType(assignment)->IsVoidType();
    // A faulty target or value has its own report; the parts of the value are then checked without
    // a requested type.
    if (refused || target->IsErrorType() || HasOwnReport(value)) {
        SelectFirst(value);
    } else if (SlcTypeNode* type = Find(value, target)) {
        SetUnique(value, type);
        if (assignment->IsEqAssign() && type->IsPointType() && target->IsPointType() &&
            !type->IsSameExactType(target))
            m_errors->Warning(
                assignment,
                "Type mismatch: assigned a " + Quoted(type) + " to a " + Quoted(target) + ".", 1);
    } else if (T::AFloat()->IsPromotableAs(target) && HasType(value, T::AFloat())) {
        SetUnique(value, T::AFloat());
    } else {
        m_errors->Error(assignment, "Type mismatch for assignment",
                        assignment->GetLValue()->ToString());
    }
}

void SlcResolveUniqueType::Case(SlcCastExprNode* cast)
{
    ResolveCast(cast);
    cast->WalkIn(this);
}

void SlcResolveUniqueType::ResolveCast(SlcCastExprNode* cast)
{
    SlcTypeNode* target = cast->GetType();
    SlcExprNode* operand = cast->GetOperand();
    SlcCheckColorSpace(*m_errors, *cast);
    if (SlcTypeNode* type = Find(operand, target))
        return SetUnique(operand, type);
    if (IsUntyped(operand))
        return;
    SelectFirst(operand);
    // A cast requests no type of its operand, since it accepts several.
    if (TypesOf(operand).size() > 1)
        return m_errors->Error(cast, "Cannot convert an ambiguous typed expression by casting");
    const SlcTypeNode* type = FirstType(operand);
    const bool isLegal = type->IsPromotableAs(target) ||
                         (target->IsColorType() && type->IsPointType()) ||
                         (target->IsPointType() && type->IsColorType());
    if (!isLegal)
        m_errors->Error(cast, "Cannot cast a " + Quoted(target) + " from a " + Quoted(type));
}

void SlcResolveUniqueType::ResolveCoordinate(SlcSyntaxNode* node, SlcExprNode* coordinate,
                                             std::string_view fault)
{
    if (HasType(coordinate, T::AFloat()))
        return SetUnique(coordinate, T::AFloat());
    SelectFirst(coordinate);
    if (!HasOwnReport(coordinate))
        m_errors->Error(node, fault);
}

void SlcResolveUniqueType::Case(SlcPointExprNode* triple)
{
    const auto& coordinates = triple->GetCoordinates();
    for (std::size_t i = 0; i < coordinates.size(); ++i)
        ResolveCoordinate(triple, coordinates[i].get(),
                          "Invalid type for coordinate " + std::to_string(i) + " of a point");
    triple->WalkIn(this);
}

void SlcResolveUniqueType::Case(SlcMatrixExprNode* matrix)
{
    const auto& values = matrix->GetValues();
    for (std::size_t i = 0; i < values.size(); ++i)
        ResolveCoordinate(matrix, values[i].get(),
                          "Invalid type for coordonnate " + std::to_string(i) + " of a matrix");
    matrix->WalkIn(this);
}

void SlcResolveUniqueType::Case(SlcArrayExprNode* array)
{
    ResolveArray(array);
    array->WalkIn(this);
}

void SlcResolveUniqueType::ResolveArray(SlcArrayExprNode* array)
{
    const SlcTypeNode* wanted = SlcPossibleTypes::Of(array)->GetUniqueType();
    if (!wanted->IsArrayType()) {
        if (!wanted->IsVoidType() && !wanted->IsErrorType())
            m_errors->Error(array, "Init array expression not initializing an array");
        for (const auto& element : array->GetExprs())
            SelectFirst(element.get());
        return;
    }
    SlcTypeNode* elementType = static_cast<const SlcArrayTypeNode*>(wanted)->GetElementType();
    int number = 0;
    for (const auto& element : array->GetExprs()) {
        ++number;
        if (SlcTypeNode* type = Find(element.get(), elementType)) {
            SetUnique(element.get(), type);
        } else if (HasType(element.get(), T::AFloat()) &&
                   T::AFloat()->IsPromotableAs(elementType)) {
            SetUnique(element.get(), T::AFloat());
        } else if (SelectFirst(element.get()); !HasOwnReport(element.get())) {
            m_errors->Error(element.get(), "Type mismatch for expression " +
                                               std::to_string(number) +
                                               " inside array initializer");
        }
    }
}

void SlcResolveUniqueType::ResolveIndex(SlcSyntaxNode* node, SlcExprNode* index)
{
    if (!HasType(index, T::AFloat()) && !HasOwnReport(index))
        m_errors->Error(node, "Index of array reference must be a float");
    SetUnique(index, T::AFloat());
}

void SlcResolveUniqueType::Case(SlcArrayRefExprNode* element)
{
    ResolveIndex(element, element->GetIndex());
    element->WalkIn(this);
}

void SlcResolveUniqueType::Case(SlcArrayRefLValueNode* lvalue)
{
    ResolveIndex(lvalue, lvalue->GetIndex());
    lvalue->WalkIn(this);
}

void SlcResolveUniqueType::Case(SlcBinOpExprNode* operation)
{
    const SlcLeftSpine spine(operation);
    for (SlcBinOpExprNode* link : spine.operations)
        m_operators.Resolve(link);
    spine.first->ApplyWalker(this);
    for (auto link = spine.operations.rbegin(); link != spine.operations.rend(); ++link)
        (*link)->GetRight()->ApplyWalker(this);
}

void SlcResolveUniqueType::Case(SlcUMinusExprNode* minus)
{
    m_operators.Resolve(minus);
    minus->WalkIn(this);
}

void SlcResolveUniqueType::Case(SlcCondExprNode* conditional)
{
    m_operators.Resolve(conditional);
    conditional->WalkIn(this);
}

void SlcResolveUniqueType::Case(SlcRelOpNode* ordering)
{
    m_operators.Resolve(ordering);
    ordering->WalkIn(this);
}

void SlcResolveUniqueType::Case(SlcEqOpNode* equality)
{
    m_operators.Resolve(equality);
    equality->WalkIn(this);
}

void SlcResolveUniqueType::Case(SlcProcCallExprNode* call)
{
    SlcResolveCall(m_errors, m_scope, m_shaderType).Resolve(call);
    call->WalkIn(this);
}

void SlcResolveUniqueType::Case(SlcTextureExprNode* texture)
{
    SlcResolveTexture(m_errors).Resolve(texture);
    texture->WalkIn(this);
}
