#pragma once

#include <string_view>

#include "frontend/SlcCodeWalker.h"
#include "semantics/SlcResolveOperator.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcSymbolTable.h"

/// Selects one type for every expression of a statement, top-down from the type that the context
/// requests, and the overload of every call. Reports expressions without a valid type.
///
/// Requires the sets of `SlcCalculateTypesSets`, and the requested type as the unique type of the
/// root. If the requested type is not in the set, for example void or error, a fault has already
/// been reported. The expression then gets the first type of its set, so that only faults inside it
/// are reported.
class SlcResolveUniqueType : public SlcCodeWalker {
public:
    explicit SlcResolveUniqueType(SlcPtr<SlcSemanticError> errors);

    /// `scope` is that of the statement, in which overloads are looked up. `shaderType` is that of
    /// the file's shader, which determines whether some built-ins are rejected.
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

    // These select the types of the operands; none of them visits the operands.
    void ResolveAssignment(SlcAssignExprNode* assignment);
    void ResolveCast(SlcCastExprNode* cast);
    void ResolveArray(SlcArrayExprNode* array);
    void ResolveIndex(SlcSyntaxNode* node, SlcExprNode* index);

    /// Resolves a component of a triple or a matrix, which must be a float; otherwise reports
    /// `fault` at `node`.
    void ResolveCoordinate(SlcSyntaxNode* node, SlcExprNode* coordinate, std::string_view fault);

    SlcPtr<SlcSemanticError> m_errors;
    SlcResolveOperator m_operators;
    SlcPtr<SlcSymbolTable> m_scope;
    SlcShaderTypeNode* m_shaderType = nullptr;
};
