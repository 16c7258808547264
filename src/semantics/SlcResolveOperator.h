#pragma once

#include "frontend/SlcBinOpNodes.h"
#include "frontend/SlcRelationNodes.h"
#include "support/reports/SlcSemanticError.h"

/// Determines the types of the operands of an operator from the type that the context requests, and
/// reports invalid operands. The operands must have their sets of types; the caller resolves their
/// operands.
class SlcResolveOperator {
public:
    explicit SlcResolveOperator(SlcPtr<SlcSemanticError> errors) : m_errors(std::move(errors)) {}

    /// Resolves arithmetic and products. The requested type is the unique type of the operator,
    /// here and in the next two functions; if it is not in the operator's set, it is replaced by
    /// one that is.
    void Resolve(SlcBinOpExprNode* operation);
    void Resolve(SlcUMinusExprNode* minus);
    void Resolve(SlcCondExprNode* conditional);
    /// Resolves `<`, `>`, `<=` and `>=`, which compare floats.
    void Resolve(SlcRelOpNode* ordering);
    /// Resolves `==` and `!=`, which compare values of one type, or a value with a float.
    void Resolve(SlcEqOpNode* equality);

private:
    /// `wanted` is a type of the operation's set; null if the set is empty.
    void ResolveArithmetic(SlcBinOpExprNode* operation, SlcTypeNode* wanted);
    void ResolveCrossProd(SlcBinOpExprNode* operation);
    void ResolveDotProd(SlcBinOpExprNode* operation);
    /// Warns if a float was most likely meant, as in `noise(P) * N`.
    void WarnOfPointNoise(SlcBinOpExprNode* product);
    /// Warns of a sum with points that is most likely a mistake. `left` and `right` are the types
    /// of the operands; null for a float that is promoted.
    void WarnOfSum(SlcBinOpExprNode* operation, const SlcTypeNode* left, const SlcTypeNode* right);
    /// Reports that the two sides have no types that can be compared.
    void ReportIncomparable(SlcEqOpNode* equality);

    SlcPtr<SlcSemanticError> m_errors;
};
