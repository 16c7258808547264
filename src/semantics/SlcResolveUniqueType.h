#pragma once

#include <string_view>

#include "frontend/SlcCodeWalker.h"
#include "semantics/SlcResolveOperator.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcSymbolTable.h"

/// Picks one type for every expression of a statement, from what the context wants downward,
/// and the overload of every call. Reports what cannot be typed.
///
/// Needs the sets that `SlcCalculateTypesSets` leaves, and the wanted type as the unique type of
/// the root. A wanted type that the expression does not have, void or error above all, says that
/// a fault has been reported: the expression then takes the first of its types, so that below it
/// only what is wrong in itself is reported.
class SlcResolveUniqueType : public SlcCodeWalker {
public:
    explicit SlcResolveUniqueType(SlcPtr<SlcSemanticError> errors);

    /// `scope` is that of the statement: calls look up their overloads there. `shaderType` is that
    /// of the file's shader, in whose functions some built-ins are refused.
    void operator()(SlcSyntaxNode* node, SlcPtr<SlcSymbolTable> scope,
                    SlcShaderTypeNode* shaderType);

private:
    using SlcCodeWalker::Case;
    void Case(SlcAssignExprNode* assignment) override;
    void Case(SlcCastExprNode* cast) override;
    void Case(SlcPointExprNode* triple) override;
    void Case(SlcMatrixExprNode* matrix) override;
    void Case(SlcArrayExprNode* array) override;
    void Case(SlcArrayRefExprNode* element) override;
    void Case(SlcArrayRefLValueNode* lvalue) override;
    void Case(SlcBinOpExprNode* operation) override;
    void Case(SlcUMinusExprNode* minus) override;
    void Case(SlcCondExprNode* conditional) override;
    void Case(SlcRelOpNode* ordering) override;
    void Case(SlcEqOpNode* equality) override;
    void Case(SlcProcCallExprNode* call) override;
    void Case(SlcTextureExprNode* texture) override;
    void Default(SlcSyntaxNode* node) override;

    // These choose the types of the operands; none of them walks on.
    void ResolveAssignment(SlcAssignExprNode* assignment);
    void ResolveCast(SlcCastExprNode* cast);
    void ResolveArray(SlcArrayExprNode* array);
    void ResolveIndex(SlcSyntaxNode* node, SlcExprNode* index);

    /// A part of a triple or a matrix, which is a float; `fault` is the report on `node` if not.
    void ResolveCoordinate(SlcSyntaxNode* node, SlcExprNode* coordinate, std::string_view fault);

    SlcPtr<SlcSemanticError> m_errors;
    SlcResolveOperator m_operators;
    SlcPtr<SlcSymbolTable> m_scope;
    SlcShaderTypeNode* m_shaderType = nullptr;
};
