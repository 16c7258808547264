// Computes the types of an operator from those of its operands. Arithmetic can have the type float,
// color or point, and a product or quotient also matrix, if one side has that type and the other
// has it or a float, which is promoted. Point, vector and normal are matched as one type; the
// result is one of them:
//
//     point - point    vector        point + vector   point         normal + normal  normal
//     float * normal   normal        vector * point   vector        vector + normal  vector
//
// Tested by tests/semantics/SlcCalculateTypesSetsTest.cpp.

#include "semantics/SlcOperatorTypes.h"

#include "semantics/SlcTypedExpr.h"

using namespace SlcTypedExpr;
using Types = std::vector<SlcTypeNode*>;

namespace {

/// True if one side has the type, and the other has it or a float, which is promoted.
bool MeetIn(SlcTypeNode* type, const SlcExprNode* left, const SlcExprNode* right)
{
    return (HasType(left, type) && Matches(right, type)) ||
           (Matches(left, type) && HasType(right, type));
}

bool IsPoint(const SlcTypeNode* type)
{
    return !type->IsVectorType() && !type->IsNormalType();
}

/// Returns the type of a sum or difference of two types of the point family: point plus vector is a
/// point, point minus point a vector.
SlcTypeNode* KindOfSum(const SlcTypeNode* left, const SlcTypeNode* right, bool isDifference)
{
    if (isDifference && IsPoint(left) && IsPoint(right))
        return SlcTypeNode::AVector();
    if (IsPoint(left) || IsPoint(right))
        return SlcTypeNode::APoint();
    const bool hasVector = left->IsVectorType() || right->IsVectorType();
    return hasVector ? SlcTypeNode::AVector() : SlcTypeNode::ANormal();
}

SlcTypeNode* KindOfProduct(const SlcTypeNode* left, const SlcTypeNode* right)
{
    if (IsPoint(left) && IsPoint(right))
        return SlcTypeNode::APoint();
    const bool hasVector = left->IsVectorType() || right->IsVectorType();
    return hasVector ? SlcTypeNode::AVector() : SlcTypeNode::ANormal();
}

/// Returns the type of the result if one operand is of the point family, and the other is too or is
/// a float; otherwise null.
SlcTypeNode* PointResult(const SlcBinOpExprNode& operation)
{
    SlcTypeNode* left = Find(operation.GetLeft(), SlcTypeNode::APoint());
    SlcTypeNode* right = Find(operation.GetRight(), SlcTypeNode::APoint());
    // A float gets the type of the other operand.
    if (!left && right)
        left = SlcPossibleTypes::Of(operation.GetLeft())->IsInTypes(right, true);
    else if (left && !right)
        right = SlcPossibleTypes::Of(operation.GetRight())->IsInTypes(left, true);
    if (!left || !right)
        return nullptr;
    if (operation.IsAdd() || operation.IsSub())
        return KindOfSum(left, right, operation.IsSub());
    return KindOfProduct(left, right);
}

Types TypesOfArithmetic(const SlcBinOpExprNode& operation)
{
    const SlcExprNode* left = operation.GetLeft();
    const SlcExprNode* right = operation.GetRight();
    Types types;
    if (HasType(left, SlcTypeNode::AFloat()) && HasType(right, SlcTypeNode::AFloat()))
        types.push_back(SlcTypeNode::AFloat());
    if (MeetIn(SlcTypeNode::AColor(), left, right))
        types.push_back(SlcTypeNode::AColor());
    if (SlcTypeNode* point = PointResult(operation))
        types.push_back(point);
    const bool isProduct = operation.IsMult() || operation.IsDiv();
    if (isProduct && MeetIn(SlcTypeNode::AMatrix(), left, right))
        types.push_back(SlcTypeNode::AMatrix());
    return types;
}

bool BothContain(SlcTypeNode* type, const SlcBinOpExprNode& operation)
{
    return HasType(operation.GetLeft(), type) && HasType(operation.GetRight(), type);
}

}  // namespace

Types SlcTypesOfBinOp(const SlcBinOpExprNode& operation)
{
    if (IsFaulty(operation.GetLeft()) || IsFaulty(operation.GetRight()))
        return {SlcTypeNode::AError()};
    if (operation.IsDotProd()) {
        const bool fits = BothContain(SlcTypeNode::AColor(), operation) ||
                          BothContain(SlcTypeNode::APoint(), operation);
        return fits ? Types{SlcTypeNode::AFloat()} : Types{};
    }
    if (operation.IsCrossProd()) {
        // The context determines whether the result is a vector, a normal or, in a shader that
        // uses only points, a point.
        return BothContain(SlcTypeNode::APoint(), operation) ? Types{SlcTypeNode::AAnyPoint()}
                                                             : Types{};
    }
    return TypesOfArithmetic(operation);
}

Types SlcTypesOfMinus(const SlcExprNode* operand)
{
    if (IsFaulty(operand))
        return {SlcTypeNode::AError()};
    Types types;
    if (HasType(operand, SlcTypeNode::AFloat()))
        types.push_back(SlcTypeNode::AFloat());
    if (HasType(operand, SlcTypeNode::AColor()))
        types.push_back(SlcTypeNode::AColor());
    if (SlcTypeNode* point = Find(operand, SlcTypeNode::APoint()))
        types.push_back(point);
    return types;
}

Types SlcTypesOfConditional(const SlcExprNode* thenValue, const SlcExprNode* elseValue)
{
    if (IsFaulty(thenValue) || IsFaulty(elseValue))
        return {SlcTypeNode::AError()};
    Types types;
    const auto elseTypes = SlcPossibleTypes::Of(elseValue);
    for (SlcTypeNode* type : TypesOf(thenValue)) {
        if (type->IsArrayType() || type->IsVoidType())
            continue;
        if (SlcTypeNode* common = elseTypes->IsInTypes(type, true))
            SlcAddTypeIfNotPresent(types, common);
    }
    return types;
}
