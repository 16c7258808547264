#pragma once

#include "frontend/SlcCodeWalker.h"
#include "semantics/SlcCalculateTypesSets.h"
#include "semantics/SlcCheckDetail.h"
#include "semantics/SlcResolveUniqueType.h"
#include "support/SlcOptionsControl.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcSymbolTable.h"

class SlcFormalsNode;
class SlcVarDefsStmtNode;

/// The tables that a declaration may refer to, other than the scope that it extends.
struct SlcOuterScopes {
    SlcPtr<SlcSymbolTable> global;
    SlcPtr<SlcSymbolTable> function;     // searched first for variables declared `extern`
    SlcPtr<SlcSymbolTable> definition;   // where a nested function is defined; null at file level
    SlcPtr<SlcSymbolTable> shader;       // the predefined variables
    SlcPtr<SlcSymbolTable> illuminance;  // the variables of a light loop; null if there is none
};

/// The place of a declaration statement, which determines what its initializer may call.
struct SlcDeclarationPlace {
    bool inFunction = false;
    int lightNesting = 0;  // number of enclosing light statements
};

/// Declares the variables of a formals list or of a declaration statement, and checks their
/// initializers. Each variable gets a symbol entry, which its node holds, even after a fault, since
/// later uses of the variable must refer to one.
class SlcAddVarsSymbolTable : public SlcCodeWalker {
public:
    SlcAddVarsSymbolTable(SlcPtr<SlcSemanticError> errors, const SlcOptionsControl* options);

    // Each of these declares the variables and returns the table for the code after them.

    /// Adds them to a new scope inside `scope`. Strings become uniform, even if they are declared
    /// varying.
    [[nodiscard]] SlcPtr<SlcSymbolTable> AddShaderFormals(SlcFormalsNode* formals,
                                                          SlcPtr<SlcSymbolTable> scope,
                                                          const SlcOuterScopes& outer,
                                                          SlcShaderTypeNode* shaderType);
    /// Adds them to a new scope inside `scope`.
    [[nodiscard]] SlcPtr<SlcSymbolTable> AddFunctionFormals(SlcFormalsNode* formals,
                                                            SlcPtr<SlcSymbolTable> scope,
                                                            const SlcOuterScopes& outer,
                                                            SlcShaderTypeNode* shaderType);
    /// Adds them to a new table of the same scope, so that code before the statement does not see
    /// the names.
    [[nodiscard]] SlcPtr<SlcSymbolTable> AddLocalVars(SlcVarDefsStmtNode* statement,
                                                      SlcPtr<SlcSymbolTable> scope,
                                                      const SlcOuterScopes& outer,
                                                      SlcShaderTypeNode* shaderType,
                                                      const SlcDeclarationPlace& place);

private:
    using SlcCodeWalker::Case;
    void Case(SlcStorageSpecNode* storage) override { m_storage = storage; }
    void Case(SlcDetailNode* detail) override { m_detail = detail; }
    void Case(SlcTypeNode* type) override;
    void Case(SlcDefExprNode* definition) override;
    void Default(SlcSyntaxNode* node) override;

    enum class Declares { ShaderFormals, FunctionFormals, Locals };

    /// Walks `node`, whose variables are added to `table`, and returns the resulting table.
    SlcPtr<SlcSymbolTable> Add(SlcSyntaxNode* node, SlcPtr<SlcSymbolTable> table, Declares what,
                               const SlcOuterScopes& outer, SlcShaderTypeNode* shaderType,
                               const SlcDeclarationPlace& place);

    /// Returns the declared type, independently of the initializer; `error` after a report.
    [[nodiscard]] SlcTypeNode* DeclaredType(const SlcDefExprNode* definition);
    /// Checks types and detail of the initializer, whose set of types must be known. `errorsBefore`
    /// is the number of errors before that set was computed.
    void CheckInitializer(SlcDefExprNode* definition, SlcTypeNode* type, int errorsBefore);
    /// Returns the declared type if the initializer matches it; void after a report.
    [[nodiscard]] SlcTypeNode* WantedType(const SlcDefExprNode* definition, SlcTypeNode* type);
    /// Returns the variable that an `extern` declaration refers to; null if there is none.
    [[nodiscard]] SlcPtr<SlcVarSymbolEntry> FindOuter(SlcIdentNode* ident) const;
    /// Handles a declaration whose name is taken, which has been reported.
    void AddRepeated(SlcDefExprNode* definition, SlcTypeNode* type);
    /// Handles an `extern` declaration: an alias of an outer variable, which must match.
    void AddExtern(SlcDefExprNode* definition, SlcTypeNode* type);
    /// Reports a variable whose array type has no length, unless its initializer is faulty.
    void ReportOpenLength(const SlcDefExprNode* definition);
    void AddVariable(SlcDefExprNode* definition, SlcTypeNode* type, SlcStorageSpecNode* storage,
                     const SlcPtr<SlcVarSymbolEntry>& outer);

    SlcPtr<SlcSymbolTable> m_current;
    SlcOuterScopes m_outer;
    SlcTypeNode* m_type = nullptr;            // of the declaration being walked
    SlcDetailNode* m_detail = nullptr;        // of the declaration being walked
    bool m_dropsVarying = false;              // `varying` is declared but not possible
    SlcStorageSpecNode* m_storage = nullptr;  // of the declaration being walked
    SlcPtr<SlcSemanticError> m_errors;
    SlcCalculateTypesSets m_typesPass;
    SlcResolveUniqueType m_uniquePass;
    SlcCheckDetail m_detailPass;
    SlcDeclarationPlace m_place;
    SlcShaderTypeNode* m_shaderType = nullptr;
    Declares m_declares = Declares::Locals;
};
