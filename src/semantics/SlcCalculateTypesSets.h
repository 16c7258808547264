#pragma once

#include <vector>

#include "frontend/SlcCodeWalker.h"
#include "semantics/SlcScopes.h"
#include "support/SlcOptionsControl.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcShadeopLoader.h"
#include "symbols/SlcSymbolTable.h"

/// Computes the set of possible types of every expression of a statement: a triple can be a point
/// or a color, and the overloads of a call can return different types. Works from the leaves up and
/// annotates each expression with a `SlcPossibleTypes` and each left value with a `SlcLValueType`.
/// `SlcResolveUniqueType` then selects one type of each set.
///
/// An expression with a reported fault has only the type `error` (`void` if it assigns to a type
/// that cannot be assigned). Every operator propagates `error`, so that one fault causes one
/// report. If no rule combines the types of the operands, the set is empty, and
/// `SlcResolveUniqueType` reports the operator.
class SlcCalculateTypesSets : public SlcCodeWalker {
public:
    SlcCalculateTypesSets(SlcPtr<SlcSemanticError> errors, const SlcOptionsControl* options);

    /// Computes the types of `node` and its parts, and reports faults. Names are looked up from
    /// `scopes.current`. An undefined variable is added to that table with type error, so that a
    /// misspelling is reported once. If `node` is a call, the function may be void. `shaderType` is
    /// that of the file's shader.
    void operator()(SlcSyntaxNode* node, const SlcScopes& scopes, SlcShaderTypeNode* shaderType);

private:
    using Types = std::vector<SlcTypeNode*>;

    using SlcCodeWalker::Case;
    void Case(SlcConstExprNode* constant) override;
    void Case(SlcPointExprNode* triple) override;
    void Case(SlcMatrixExprNode* matrix) override;
    void Case(SlcCastExprNode* cast) override;
    void Case(SlcArrayExprNode* array) override;
    void Case(SlcIdentExprNode* variable) override;
    void Case(SlcArrayRefExprNode* element) override;
    void Case(SlcIdentLValueNode* lvalue) override;
    void Case(SlcArrayRefLValueNode* lvalue) override;
    void Case(SlcAssignExprNode* assignment) override;
    void Case(SlcBinOpExprNode* operation) override;
    void Case(SlcUMinusExprNode* minus) override;
    void Case(SlcCondExprNode* conditional) override;
    void Case(SlcTextureExprNode* texture) override;
    void Case(SlcProcCallExprNode* call) override;
    void Case(SlcExprNode* expr) override;
    void Default(SlcSyntaxNode* node) override;

    /// Visits the children of `node` as operands, whose values are used.
    void WalkOperands(SlcSyntaxNode* node);
    /// Returns the variable, never null: an undefined one is reported and declared with type error.
    [[nodiscard]] SlcPtr<SlcVarSymbolEntry> FindVariable(const SlcSyntaxNode* node,
                                                         SlcIdentNode* ident);
    /// Sets the type of the target to `type`, which may be error; to error, after a report, if the
    /// variable must not be written.
    void SetTypeOfTarget(SlcLValueNode* lvalue, const SlcPtr<SlcVarSymbolEntry>& entry,
                         SlcTypeNode* type);
    /// Returns false, after a report, for an input formal; only warns of a read-only variable.
    [[nodiscard]] bool IsWritable(const SlcLValueNode* lvalue, SlcPtr<SlcVarSymbolEntry> entry);
    /// Returns the return types of the matching overloads; only `error` if none matches, which is
    /// reported, or if an argument is faulty.
    [[nodiscard]] Types TypesOfCall(SlcProcCallExprNode* call, bool valueUsed);
    /// If the value is used, returns void overloads only if the types match no other overload.
    [[nodiscard]] SlcOverloads FindOverloads(SlcProcCallExprNode* call, bool valueUsed);
    void ReportNoOverload(SlcProcCallExprNode* call, const SlcOverloads& overloads);
    /// Adds the shadeops of that name to the current table. Returns false if there is none, or if
    /// the options disable shadeops.
    [[nodiscard]] bool LoadDSO(SlcSyntaxNode* node, SlcIdentNode* name);

    SlcPtr<SlcSymbolTable> m_current;
    SlcShaderTypeNode* m_shaderType = nullptr;
    SlcPtr<SlcSemanticError> m_errors;
    const SlcOptionsControl* m_options;
    SlcShadeopLoader m_shadeops;
    bool m_valueUsed = false;  // true while the value of the current expression is used
};
