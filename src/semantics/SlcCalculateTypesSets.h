#pragma once

#include <vector>

#include "frontend/SlcCodeWalker.h"
#include "semantics/SlcScopes.h"
#include "support/SlcOptionsControl.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcShadeopLoader.h"
#include "symbols/SlcSymbolTable.h"

/// Gives every expression of a statement the set of types that it may have: a triple can be a
/// point or a color, a call can mean overloads that return different types. Works from the
/// leaves up and leaves a `SlcPossibleTypes` on each expression, a `SlcLValueType` on each left
/// value. `SlcResolveUniqueType` then picks one type of each set.
///
/// An expression whose fault has been reported has the one type `error`, which every operator
/// above it passes on, so that one fault gives one report. Operands without a common rule give
/// an empty set; who asks for the type reports it.
class SlcCalculateTypesSets : public SlcCodeWalker {
public:
    SlcCalculateTypesSets(SlcPtr<SlcSemanticError> errors, const SlcOptionsControl* options);

    /// The current scope is searched for names, and gets an undefined name as a variable of type
    /// error, so that a misspelling is reported once. A root that is a call may have no value.
    /// `shaderType` is that of the file's shader.
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

    /// The children first; their values are used.
    void WalkOperands(SlcSyntaxNode* node);
    /// The variable; null after the report that there is none.
    [[nodiscard]] SlcPtr<SlcVarSymbolEntry> FindVariable(const SlcSyntaxNode* node,
                                                         SlcIdentNode* ident);
    /// `type` is error if that has been reported already; it becomes so if the variable may not be
    /// written.
    void SetTypeOfTarget(SlcLValueNode* lvalue, const SlcPtr<SlcVarSymbolEntry>& entry,
                         SlcTypeNode* type);
    /// False after a report; one that should not be written gets a warning.
    [[nodiscard]] bool IsWritable(const SlcLValueNode* lvalue, SlcPtr<SlcVarSymbolEntry> entry);
    /// The return types of the matching overloads; error after a report.
    [[nodiscard]] Types TypesOfCall(SlcProcCallExprNode* call, bool valueUsed);
    /// Those with a value if it is used and there are any.
    [[nodiscard]] SlcOverloads FindOverloads(SlcProcCallExprNode* call, bool valueUsed);
    void ReportNoOverload(SlcProcCallExprNode* call, const SlcOverloads& overloads);
    /// Adds the shadeops of that name to the current table. False if there is none.
    [[nodiscard]] bool LoadDSO(SlcSyntaxNode* node, SlcIdentNode* name);

    SlcPtr<SlcSymbolTable> m_current;
    SlcShaderTypeNode* m_shaderType = nullptr;
    SlcPtr<SlcSemanticError> m_errors;
    const SlcOptionsControl* m_options;
    SlcShadeopLoader m_shadeops;
    bool m_valueUsed = false;  // the value of the current expression is used
};
