#pragma once

#include <memory>

#include "frontend/SlcCodeWalker.h"
#include "semantics/SlcAddVarsSymbolTable.h"
#include "semantics/SlcCheckUsage.h"
#include "semantics/SlcInlineResults.h"
#include "semantics/SlcScopes.h"

class SlcExprNode;
class SlcFormalsNode;
class SlcRelationNode;

/// Walks definitions and statements, builds their scopes, and runs every expression through the
/// passes: possible types, unique type, detail, usage. All passes finish a statement before the
/// next statement is checked, which is possible since everything is declared before its use.
///
/// The body of each shader or function is checked by a separate walker, whose fields then hold the
/// facts about the body.
class SlcCheckSemantics : public SlcCodeWalker {
public:
    /// `usage` is the usage record of the code that will be checked; null for no usage checks. It
    /// and `options` must outlive the walker.
    SlcCheckSemantics(SlcPtr<SlcSemanticError> errors, SlcOptionsControl& options,
                      SlcCheckUsage* usage);

    /// Checks a tree or a body, reports its faults, and stores the results in its nodes. `scopes`
    /// are those around `node`.
    void operator()(SlcSyntaxNode* node, const SlcScopes& scopes);

    /// Runs all passes over an expression whose context requests no type. Reports an expression
    /// that has several possible types.
    void CheckExprType(SlcExprNode* expr);

private:
    struct LightStatement;
    enum class LightArgument { Position, Axis, Angle };
    using SlcCodeWalker::Case;
    // SlcCheckSemantics.cpp: definitions.
    void Case(SlcDefinitionsNode* node) override;
    void Case(SlcShaderDefNode* node) override;
    void Case(SlcFuncDefNode* node) override;
    void Case(SlcFuncDefStmtNode* node) override;
    // SlcCheckStatements.cpp.
    void Case(SlcStmtsNode* node) override;
    void Case(SlcVarDefsStmtNode* node) override;
    void Case(SlcAssignStmtNode* node) override;
    void Case(SlcProcCallStmtNode* node) override;
    void Case(SlcReturnStmtNode* node) override;
    void Case(SlcIfThenStmtNode* node) override;
    void Case(SlcIfThenElseStmtNode* node) override;
    void Case(SlcForStmtNode* node) override;
    void Case(SlcWhileStmtNode* node) override;
    void Case(SlcLoopModStmtNode* node) override;
    // SlcCheckLightStatements.cpp, except for the last two functions.
    void Case(SlcIlluminanceStmtNode* node) override;
    void Case(SlcIlluminateStmtNode* node) override;
    void Case(SlcSolarStmtNode* node) override;
    void Case(SlcStmtNode* node) override;
    void Default(SlcSyntaxNode* node) override;

    /// Returns the name of a variable that is declared in each function with the function's return
    /// type, for use by `return`. It is not a valid name in a source.
    [[nodiscard]] static SlcIdentNode* ReturnTypeIdent();
    /// Returns the scopes for declarations at this place.
    [[nodiscard]] SlcOuterScopes OuterScopes() const;
    /// Creates the walker for the body of `definition`, a shader or function.
    [[nodiscard]] SlcCheckSemantics BodyWalker(SlcDefinitionNode* definition,
                                               SlcCheckUsage* usage) const;
    /// Creates the usage record of a body with these formals; null without usage checks.
    [[nodiscard]] std::unique_ptr<SlcCheckUsage> BodyUsage(SlcFormalsNode* formals) const;
    /// Records the scope of the function's definition in the table of its formals, unless
    /// `--strict` is given.
    void NoteDefinitionScope(SlcSymbolTable& formals) const;
    /// Reports a return type that is an array of void.
    void CheckReturnType(const SlcFuncDefNode* node);
    /// Adds the function to its scope, so that it can be called from here on. Warns if it replaces
    /// another.
    void AddFunction(SlcFuncDefNode* node, SlcPtr<SlcAnnotation> info);
    /// Warns that the function replaces `replaced`, an earlier one with the same types in the same
    /// scope, which later calls cannot reach.
    void WarnOfReplaced(const SlcFuncDefNode* node, const SlcFuncSymbolEntry& replaced);

    /// Runs the first pass over an expression, or over both sides of a condition.
    void FindTypes(SlcSyntaxNode* node);
    /// Runs the passes after the computation of possible types.
    void FinishChecks(SlcSyntaxNode* node);
    /// Runs all passes over a relation, which has no type.
    void CheckCondition(SlcRelationNode* condition);
    /// Returns the type of an expression whose context requests none. If the expression has several
    /// types, reports that and returns the first; returns void if it has none.
    [[nodiscard]] SlcTypeNode* WantedTypeOf(SlcExprNode* expr);
    /// Returns the type of a call statement. If the function has several return types, returns void
    /// after an error, or after a warning if one of them is void and `--strict` is not given.
    [[nodiscard]] SlcTypeNode* WantedTypeOfCall(SlcProcCallExprNode* call);
    /// Returns the function's return type, or void in a shader, after reports on the place and the
    /// value of the `return`.
    [[nodiscard]] SlcTypeNode* WantedTypeOfReturn(SlcReturnStmtNode* node);
    /// Passes `node` to the usage record; call it in the order of execution.
    void CheckUsage(SlcSyntaxNode* node);
    /// Walks a branch of a statement, and then `step`, which may be null, with a separate usage
    /// record, which it returns; null without usage checks.
    [[nodiscard]] std::unique_ptr<SlcCheckUsage> WalkBranch(SlcSyntaxNode* branch,
                                                            SlcExprNode* step);
    /// Walks the body of the loop and then `step`, which may be null, as a branch, and merges its
    /// usage record.
    void WalkLoopBody(SlcLoopStmtNode* loop, SlcExprNode* step);

    /// True if this type of shader may contain the statement; always true in a function.
    [[nodiscard]] bool IsLegalHere(const LightStatement& statement) const;
    /// Checks an argument in the head of the statement; null is ignored.
    void CheckLightArgument(SlcExprNode* argument, const LightStatement& statement,
                            LightArgument role);
    /// Checks the place, the arguments and the body of the statement. `position` is null for a
    /// statement that has none.
    template <class Node>
    void CheckLightStatement(Node* node, const LightStatement& statement, SlcExprNode* position);
    /// Calls `CheckLightStatement`; a failed look-up in it is a fatal error.
    template <class Node>
    void GuardLightStatement(Node* node, const LightStatement& statement, SlcExprNode* position);

    /// Counts an `illuminate` or `solar` statement, or a call statement whose function contains
    /// one. Warns if another may run before it, whose light it would replace.
    void CountLight(const SlcSyntaxNode* node);

    static const LightStatement sm_illuminance;
    static const LightStatement sm_illuminate;
    static const LightStatement sm_solar;

    SlcScopes m_scopes;
    SlcPtr<SlcSymbolTable>
        m_function;  // formals of the body, or scope around the nested function being checked
    SlcPtr<SlcSymbolTable> m_definition;  // scope around the body's function if nested, or null
    SlcPtr<SlcSemanticError> m_errors;
    SlcOptionsControl& m_options;
    SlcCalculateTypesSets m_typesPass;
    SlcResolveUniqueType m_uniquePass;
    SlcAddVarsSymbolTable m_declarations;
    SlcCheckDetail m_detailPass;
    SlcPtr<SlcInlineBudget> m_inlineBudget;     // for all functions of the compile
    SlcCheckUsage* m_usage;                     // of the branch being walked; may be null
    SlcShaderTypeNode* m_shaderType = nullptr;  // of the shader of the file
    SlcDefinitionNode* m_body = nullptr;        // definition of the body; null at file level
    bool m_inFunction = false;
    bool m_shaderSeen = false;
    bool m_hasReturn = false;
    bool m_hasIlluminance = false;
    bool m_hasIlluminate = false;  // or `solar`
    int m_lights = 0;              // most statements that `CountLight` counted on one path
    int m_errorsBefore = 0;        // number of errors before the current expression
    int m_loopDepth = 0;
    int m_lightNesting = 0;
};
