#pragma once

#include "frontend/SlcBinOpNodes.h"
#include "frontend/SlcRelationNodes.h"
#include "support/reports/SlcSemanticError.h"

/// Decides the types of an operator's operands from the type that the context wants of it, and
/// reports operands that it does not take. The operands have their sets of types; their own
/// operands are left to the caller.
class SlcResolveOperator {
public:
    explicit SlcResolveOperator(SlcPtr<SlcSemanticError> errors) : m_errors(std::move(errors)) {}

    /// Arithmetic and products. The type that is wanted is the unique type of the operator, here
    /// and in the next two; it becomes one of the operator's set.
    void Resolve(SlcBinOpExprNode* operation);
    void Resolve(SlcUMinusExprNode* minus);
    void Resolve(SlcCondExprNode* conditional);
    /// `<` and its kin compare floats.
    void Resolve(SlcRelOpNode* ordering);
    /// `==` and `!=` compare values of one type, or a value with a float that is promoted.
    void Resolve(SlcEqOpNode* equality);

private:
    /// `wanted`: a type of the operation's set; null if the set is empty.
    void ResolveArithmetic(SlcBinOpExprNode* operation, SlcTypeNode* wanted);
    void ResolveCrossProd(SlcBinOpExprNode* operation);
    void ResolveDotProd(SlcBinOpExprNode* operation);
    /// Advises where a number was most likely meant, as in `noise(P) * N`.
    void WarnOfPointNoise(SlcBinOpExprNode* product);
    /// `left` and `right`: the kinds of points that are added, null for a float.
    void WarnOfSum(SlcBinOpExprNode* operation, const SlcTypeNode* left, const SlcTypeNode* right);
    /// Nothing that the two sides hold can be compared.
    void ReportIncomparable(SlcEqOpNode* equality);

    SlcPtr<SlcSemanticError> m_errors;
};
