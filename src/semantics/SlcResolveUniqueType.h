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
/// root. If the set of a call or an operator lacks the requested type, the expression is a float,
/// provided that its set contains float and a float can be promoted to that type. Otherwise a fault
/// has been reported, and the requested type is for example void or error: the expression then gets
/// the first type of its set, so that only faults inside it are reported.
class SlcResolveUniqueType : public SlcCodeWalker {
public:
    explicit SlcResolveUniqueType(SlcPtr<SlcSemanticError> errors);

    /// Resolves `node`, an expression or a condition. `scope` is that of the statement, in which
    /// overloads are looked up. `shaderType` is that of the file's shader, which determines whether
    /// some built-ins are rejected; if it is null, none is.
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

    // Each of these selects the types of the operands and reports faults. None visits the operands.
    void ResolveAssignment(SlcAssignExprNode* assignment);
    void ResolveCast(SlcCastExprNode* cast);
    void ResolveArray(SlcArrayExprNode* array);
    void ResolveIndex(SlcSyntaxNode* node, SlcExprNode* index);

    /// Selects float for a component of a triple or a matrix. If it cannot be a float, reports
    /// `fault` at `node`, unless the component has its own report.
    void ResolveCoordinate(SlcSyntaxNode* node, SlcExprNode* coordinate, std::string_view fault);

    SlcPtr<SlcSemanticError> m_errors;
    SlcResolveOperator m_operators;
    SlcPtr<SlcSymbolTable> m_scope;
    SlcShaderTypeNode* m_shaderType = nullptr;
};
