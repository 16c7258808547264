#pragma once

#include "frontend/SlcCodeWalker.h"
#include "semantics/SlcCallPlace.h"
#include "support/SlcPtr.h"
#include "support/reports/SlcSemanticError.h"

/// Adds advice to a report that a value must be uniform, if `detail` is open: unknown, since a
/// local or formal is declared without a detail. Does nothing for other details.
void SlcAdviseOnOpenDetail(SlcSemanticError& errors, const SlcSyntaxNode* node,
                           const SlcDetailNode& detail, const SlcCallPlace& place);

/// Computes the detail of every expression of a statement, from the leaves up, and reports
/// violations of the rules of uniform and varying. Stores each detail in the `SlcPossibleTypes` or
/// `SlcLValueType` of the node. The unique types and the overloads must have been selected.
///
/// A local, or a formal of a function, that is declared without a detail has an unknown detail
/// here. For a call, `SlcCheckInlineDetail` determines the details in the function by evaluating
/// its body.
class SlcCheckDetail : public SlcCodeWalker {
public:
    explicit SlcCheckDetail(SlcPtr<SlcSemanticError> errors);

    /// `place` is the place of the statement; its `wanted` is the detail that is requested of
    /// `node`. Each call is checked by the rule of its function, which may evaluate a body.
    void operator()(SlcSyntaxNode* node, const SlcCallPlace& place);

    // Accessors for the rules of calls.
    [[nodiscard]] SlcPtr<SlcSemanticError>& Errors() { return m_errors; }
    [[nodiscard]] const SlcCallPlace& Place() const { return m_place; }

private:
    using SlcCodeWalker::Case;
    void Case(SlcConstExprNode* node) override;
    void Case(SlcIdentExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcIdentLValueNode* node) override;
    void Case(SlcArrayRefLValueNode* node) override;
    void Case(SlcAssignExprNode* node) override;
    void Case(SlcCastExprNode* node) override;
    void Case(SlcUMinusExprNode* node) override;
    void Case(SlcPointExprNode* node) override;
    void Case(SlcMatrixExprNode* node) override;
    void Case(SlcArrayExprNode* node) override;
    void Case(SlcBinOpExprNode* node) override;
    void Case(SlcCondExprNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Case(SlcTextureExprNode* node) override;
    void Case(SlcCompOpNode* node) override;
    void Case(SlcExprNode* node) override;
    void Default(SlcSyntaxNode* node) override;

    /// Walks the elements and stores the combination of their details.
    template <class Node, class Elements>
    void CombineElements(Node* node, const Elements& elements);

    SlcPtr<SlcSemanticError> m_errors;
    SlcCallPlace m_place;                  // of the node being walked
    SlcDetailNode* m_condition = nullptr;  // of all comparisons so far in the current condition
};
