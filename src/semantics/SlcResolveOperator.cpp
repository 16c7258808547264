// Determines the types of the operands of an operator, for arithmetic from the type of its result.
// A comparison has no type: the orderings compare floats, and `==` and `!=` need exactly one pair
// of types that can be compared; otherwise they are reported. If both operands are wrong, as in
// "a" + "b", there is only one report. Warnings for legal but doubtful operations, such as P + P,
// are raised here too.
//
//     requested color:   2 * noise(s)   left float, promoted; right the noise that returns a color
//     nothing requested: s == (1, 0, 0) float with point, or float with color: ambiguous
//                     Cs == (1, 0, 0)   color with color, since equal types come first
//
// Tested by tests/semantics/SlcResolveUniqueTypeTest.cpp.

#include "semantics/SlcResolveOperator.h"

#include <string>
#include <vector>

#include "frontend/SlcCallNodes.h"
#include "semantics/SlcTypedExpr.h"

using namespace SlcTypedExpr;
using T = SlcTypeNode;

namespace {

bool IsTruePoint(const SlcTypeNode* type)
{
    return type && type->IsTruePointType();
}

bool AreBothTruePoints(const SlcTypeNode* left, const SlcTypeNode* right)
{
    return IsTruePoint(left) && IsTruePoint(right);
}

struct TypePair {
    T* left;
    T* right;
};

/// Returns the pairs of types for which the operands can be compared: pairs of equal types or, if
/// there is none, pairs with a float that is promoted.
std::vector<TypePair> ComparablePairs(const SlcExprNode* left, const SlcExprNode* right)
{
    std::vector<TypePair> pairs;
    for (T* type : {T::AFloat(), T::AString(), T::AColor(), T::APoint(), T::AMatrix()})
        if (HasType(left, type) && HasType(right, type))
            pairs.push_back({type, type});
    if (!pairs.empty())
        return pairs;
    T* const promoted[] = {T::AColor(), T::APoint(), T::AMatrix()};
    for (T* type : promoted)
        if (HasType(left, T::AFloat()) && HasType(right, type))
            pairs.push_back({T::AFloat(), type});
    for (T* type : promoted)
        if (HasType(left, type) && HasType(right, T::AFloat()))
            pairs.push_back({type, T::AFloat()});
    return pairs;
}

bool IsComparable(const SlcExprNode* expr)
{
    for (T* type : {T::AFloat(), T::AString(), T::AColor(), T::APoint(), T::AMatrix()})
        if (HasType(expr, type))
            return true;
    return false;
}

/// Returns a call in `expr`, for example of noise, that could also return a float; null if the
/// search finds none. It enters negations and operators whose result could be a float. The right
/// side of an operator counts only if it is itself a call; the search continues in the left side,
/// so that chains of any length take linear time.
const SlcProcCallExprNode* CallThatCouldBeFloat(const SlcExprNode* expr)
{
    while (HasType(expr, T::AFloat())) {
        if (const auto* call = dynamic_cast<const SlcProcCallExprNode*>(expr))
            return call;
        if (const auto* minus = dynamic_cast<const SlcUMinusExprNode*>(expr)) {
            expr = minus->GetOperand();
            continue;
        }
        const auto* operation = dynamic_cast<const SlcBinOpExprNode*>(expr);
        if (!operation || operation->IsDotProd())
            return nullptr;
        const auto* right = dynamic_cast<const SlcProcCallExprNode*>(operation->GetRight());
        if (right && HasType(right, T::APoint()) && HasType(right, T::AFloat()))
            return right;
        expr = operation->GetLeft();
    }
    return nullptr;
}

}  // namespace

void SlcResolveOperator::Resolve(SlcBinOpExprNode* operation)
{
    const SlcExprNode* left = operation->GetLeft();
    const SlcExprNode* right = operation->GetRight();
    SlcTypeNode* wanted = ResolveRequestedType(operation);
    // An operand without a possible type is reported separately.
    if ((wanted && wanted->IsErrorType()) || IsUntyped(left) || IsUntyped(right)) {
        SelectFirst(left);
        SelectFirst(right);
    } else if (operation->IsDotProd()) {
        ResolveDotProd(operation);
    } else if (operation->IsCrossProd()) {
        ResolveCrossProd(operation);
    } else {
        ResolveArithmetic(operation, wanted);
    }
}

void SlcResolveOperator::ResolveArithmetic(SlcBinOpExprNode* operation, SlcTypeNode* wanted)
{
    SlcExprNode* left = operation->GetLeft();
    SlcExprNode* right = operation->GetRight();
    if (wanted) {
        // A type is in the operator's set only if a side has it, where the point family counts as
        // one type; a float on the other side is promoted.
        SlcTypeNode* leftType = Find(left, wanted);
        SlcTypeNode* rightType = Find(right, wanted);
        SetUnique(left, leftType ? wanted : T::AFloat());
        SetUnique(right, rightType ? wanted : T::AFloat());
        if (operation->IsAdd())
            WarnOfSum(operation, leftType, rightType);
        if (operation->IsMult() && leftType && rightType && leftType->IsPointType() &&
            rightType->IsPointType())
            WarnOfPointNoise(operation);
        return;
    }
    const std::string sign(operation->ToString());
    if (!Matches(left, T::AFloat()))
        m_errors->Error(operation, "Invalid type for left expression of a " + sign);
    else if (!Matches(right, T::AFloat()))
        m_errors->Error(operation, "Invalid type for right expression of a " + sign);
    else
        m_errors->Error(operation, "Incompatible types for " + sign);
}

void SlcResolveOperator::WarnOfSum(SlcBinOpExprNode* operation, const SlcTypeNode* left,
                                   const SlcTypeNode* right)
{
    const char* warning = nullptr;
    if (AreBothTruePoints(left, right))
        warning = "Try to add two points, misuse of this operator";
    else if (!left && IsTruePoint(right))
        warning = "Try to add a float and a point, misuse of this operator";
    else if (IsTruePoint(left) && !right)
        warning = "Try to add a point and a float, misuse of this operator";
    if (warning)
        m_errors->Warning(operation, warning, 1);
}

void SlcResolveOperator::WarnOfPointNoise(SlcBinOpExprNode* product)
{
    const SlcProcCallExprNode* call = CallThatCouldBeFloat(product->GetRight());
    if (!call)
        call = CallThatCouldBeFloat(product->GetLeft());
    if (!call)
        return;
    const std::string& name = call->GetIdent()->GetName();
    m_errors->Warning(product,
                      "A point-valued '" + name +
                          "' is multiplied component by component: write 'float " + name +
                          "(...)' for the number",
                      2);
}

void SlcResolveOperator::ResolveCrossProd(SlcBinOpExprNode* operation)
{
    SlcTypeNode* left = Find(operation->GetLeft(), T::APoint());
    SlcTypeNode* right = Find(operation->GetRight(), T::APoint());
    if (!left)
        return m_errors->Error(operation, "Invalid type for left expression of a cross product");
    if (!right)
        return m_errors->Error(operation, "Invalid cross product");
    SetUnique(operation->GetLeft(), left);
    SetUnique(operation->GetRight(), right);
    if (AreBothTruePoints(left, right))
        m_errors->Warning(operation,
                          "A cross product is weel defined for vectors or normals, not points", 1);
}

void SlcResolveOperator::ResolveDotProd(SlcBinOpExprNode* operation)
{
    SlcExprNode* left = operation->GetLeft();
    SlcExprNode* right = operation->GetRight();
    SlcTypeNode* leftPoint = Find(left, T::APoint());
    SlcTypeNode* rightPoint = Find(right, T::APoint());
    const bool leftColor = HasType(left, T::AColor());
    const bool rightColor = HasType(right, T::AColor());
    const bool areColors = leftColor && rightColor;
    const bool arePoints = leftPoint && rightPoint;
    if (areColors && arePoints) {
        // Report only the left side, since its type would determine that of the right side.
        m_errors->Error(operation, "Ambiguous type for left expression of dot product");
    } else if (areColors || arePoints) {
        SetUnique(left, areColors ? T::AColor() : T::APoint());
        SetUnique(right, areColors ? T::AColor() : T::APoint());
        if (AreBothTruePoints(leftPoint, rightPoint))
            m_errors->Warning(operation,
                              "Try to perform a dot product of two points, misuse of this operator",
                              1);
    } else if (!leftColor && !leftPoint) {
        m_errors->Error(operation, "Invalid type for left expression of dot product");
    } else if (!rightColor && !rightPoint) {
        m_errors->Error(operation, "Invalid type for right expression of dot product");
    } else {
        m_errors->Error(operation, "Incompatible types for a dot product");
    }
}

void SlcResolveOperator::Resolve(SlcUMinusExprNode* minus)
{
    if (SlcTypeNode* wanted = ResolveRequestedType(minus))
        return SetUnique(minus->GetOperand(), wanted);
    if (!IsUntyped(minus->GetOperand()))
        m_errors->Error(minus, "Invalid type for the expression of a unary minus");
    SelectFirst(minus->GetOperand());
}

void SlcResolveOperator::Resolve(SlcCondExprNode* conditional)
{
    const SlcExprNode* thenValue = conditional->GetThen();
    const SlcExprNode* elseValue = conditional->GetElse();
    if (SlcTypeNode* wanted = ResolveRequestedType(conditional)) {
        SetUnique(thenValue, wanted);
        SetUnique(elseValue, wanted);
        return;
    }
    if (!IsUntyped(thenValue) && !IsUntyped(elseValue))
        m_errors->Error(conditional, "Type mismatch for resulting expressions of operator '? :'");
    SelectFirst(thenValue);
    SelectFirst(elseValue);
}

void SlcResolveOperator::Resolve(SlcRelOpNode* ordering)
{
    const std::string sign(ordering->ToString());
    const auto isWrong = [](const SlcExprNode* operand) {
        return !HasType(operand, T::AFloat()) && !HasOwnReport(operand);
    };
    if (isWrong(ordering->GetLeft()))
        m_errors->Error(ordering, "Invalid type for left expression of '" + sign + "'.");
    else if (isWrong(ordering->GetRight()))
        m_errors->Error(ordering, "Invalid type for right expression of '" + sign + "'.");
    SetUnique(ordering->GetLeft(), T::AFloat());
    SetUnique(ordering->GetRight(), T::AFloat());
}

void SlcResolveOperator::Resolve(SlcEqOpNode* equality)
{
    const SlcExprNode* left = equality->GetLeft();
    const SlcExprNode* right = equality->GetRight();
    SelectFirst(left);
    SelectFirst(right);
    if (HasOwnReport(left) || HasOwnReport(right))
        return;
    const auto pairs = ComparablePairs(left, right);
    if (pairs.empty())
        return ReportIncomparable(equality);
    if (pairs.size() == 1) {
        SetUnique(left, pairs.front().left);
        SetUnique(right, pairs.front().right);
        return;
    }
    // If there are several pairs, at least one side has several types. The report names the left
    // side if it has.
    const bool isLeft = pairs.front().left != pairs.back().left;
    m_errors->Error(equality, (isLeft ? "Ambiguous type for left expression of "
                                      : "Ambiguous type for right expression of ") +
                                  std::string(equality->ToString()));
}

void SlcResolveOperator::ReportIncomparable(SlcEqOpNode* equality)
{
    const std::string sign(equality->ToString());
    if (!IsComparable(equality->GetLeft()))
        m_errors->Error(equality, "Invalid type for left expression of " + sign);
    else if (!IsComparable(equality->GetRight()))
        m_errors->Error(equality, "Invalid type for right expression of " + sign);
    else
        m_errors->Error(equality, "Incompatible types for " + sign);
}
