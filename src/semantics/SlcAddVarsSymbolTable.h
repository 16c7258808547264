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
    // A variable declared `extern` is looked up in the next four tables, in this order.
    SlcPtr<SlcSymbolTable> function;     // the formals of the body
    SlcPtr<SlcSymbolTable> definition;   // the scope around a nested function; null elsewhere
    SlcPtr<SlcSymbolTable> shader;       // the predefined variables
    SlcPtr<SlcSymbolTable> illuminance;  // the variables of a light loop, in functions of a shader
                                         // that sees lights; null elsewhere
};

/// The place of a declaration, on which the checks of calls in its initializer depend.
struct SlcDeclarationPlace {
    bool inFunction = false;
    int lightNesting = 0;  // number of enclosing `illuminance`, `illuminate`, `solar` statements
};

/// Declares the variables of a formals list or of a declaration statement, and checks their
/// initializers. The node of each variable gets a symbol entry, even after a fault, since later
/// passes read it.
class SlcAddVarsSymbolTable : public SlcCodeWalker {
public:
    SlcAddVarsSymbolTable(SlcPtr<SlcSemanticError> errors, const SlcOptionsControl* options);

    // Each of these functions declares variables, reports faults in their declarations, and returns
    // the table for the code after the declarations.

    /// Adds the parameters of a shader to a new scope inside `scope`. Strings and arrays of strings
    /// become uniform; if they are declared varying, a warning says so.
    [[nodiscard]] SlcPtr<SlcSymbolTable> AddShaderFormals(SlcFormalsNode* formals,
                                                          SlcPtr<SlcSymbolTable> scope,
                                                          const SlcOuterScopes& outer,
                                                          SlcShaderTypeNode* shaderType);
    /// Adds the formals of a function to a new scope inside `scope`.
    [[nodiscard]] SlcPtr<SlcSymbolTable> AddFunctionFormals(SlcFormalsNode* formals,
                                                            SlcPtr<SlcSymbolTable> scope,
                                                            const SlcOuterScopes& outer,
                                                            SlcShaderTypeNode* shaderType);
    /// Adds the variables of a statement to a new table of the same scope, so that code before the
    /// statement does not see the names.
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

    /// Walks `node`, adds its variables to `table`, and returns that table.
    SlcPtr<SlcSymbolTable> Add(SlcSyntaxNode* node, SlcPtr<SlcSymbolTable> table, Declares what,
                               const SlcOuterScopes& outer, SlcShaderTypeNode* shaderType,
                               const SlcDeclarationPlace& place);

    /// Returns the declared type, independently of the initializer; `error` after a report.
    [[nodiscard]] SlcTypeNode* DeclaredType(const SlcDefExprNode* definition);
    /// Checks the type and the detail of the initializer, whose set of types must be known. `type`
    /// is the declared type, and `errorsBefore` the number of errors before that set was computed.
    void CheckInitializer(SlcDefExprNode* definition, SlcTypeNode* type, int errorsBefore);
    /// Returns `type`, the declared type, if the initializer matches it; otherwise void, after a
    /// report. An initializer without a possible type is reported by the next pass instead.
    [[nodiscard]] SlcTypeNode* WantedType(const SlcDefExprNode* definition, SlcTypeNode* type);
    /// Returns the variable that an `extern` declaration refers to; null if there is none.
    [[nodiscard]] SlcPtr<SlcVarSymbolEntry> FindOuter(SlcIdentNode* ident) const;
    /// Handles a declaration whose name is taken, which has been reported.
    void AddRepeated(SlcDefExprNode* definition, SlcTypeNode* type);
    /// Handles an `extern` declaration: an alias of an outer variable. Reports an initializer, and
    /// an outer variable that is missing or does not match.
    void AddExtern(SlcDefExprNode* definition, SlcTypeNode* type);
    /// Reports a variable whose array type has no length, unless its initializer is faulty.
    void ReportOpenLength(const SlcDefExprNode* definition);
    /// Adds the entry of the variable, and stores it in the node. An array of unknown length gets
    /// the error type, after a report, unless it is `extern` or the formal of a function.
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
