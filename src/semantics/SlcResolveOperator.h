#pragma once

#include "frontend/SlcBinOpNodes.h"
#include "frontend/SlcRelationNodes.h"
#include "support/reports/SlcSemanticError.h"

/// Determines the types of the operands of an operator, and reports invalid operands. The types
/// follow from the type that the context requests or, for comparisons and for dot and cross
/// products, from the operands. The operands must have their sets of types; the caller then
/// resolves the parts of the operands.
class SlcResolveOperator {
public:
    explicit SlcResolveOperator(SlcPtr<SlcSemanticError> errors) : m_errors(std::move(errors)) {}

    /// Resolves arithmetic, dot and cross products. The requested type is the unique type of the
    /// operator, here and in the next two functions; if it is not in the operator's set, it is
    /// replaced by one that is, unless the set is empty.
    void Resolve(SlcBinOpExprNode* operation);
    void Resolve(SlcUMinusExprNode* minus);
    void Resolve(SlcCondExprNode* conditional);
    /// Resolves `<`, `>`, `<=` and `>=`, which compare floats.
    void Resolve(SlcRelOpNode* ordering);
    /// Resolves `==` and `!=`, which compare two values of one type, or a float with a color, a
    /// matrix or a member of the point family.
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
    /// Reports that one side cannot be compared at all, or the two sides not with each other.
    void ReportIncomparable(SlcEqOpNode* equality);

    SlcPtr<SlcSemanticError> m_errors;
};
