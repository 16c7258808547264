#pragma once

#include <map>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frontend/SlcCodeWalker.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcSymbolEntry.h"

class SlcExprNode;

/// Warns of reads of variables that may not be set yet. A body is walked in the order of execution.
/// An object of this class is the record of a body, or of a branch in it: the body of a loop also
/// counts as a branch. The record of a branch is merged into the enclosing record where the
/// statement ends.
///
/// Each variable has only one state, that at the current point of the walk. A record stores the
/// changes of its branch, so that they can be undone before another branch is walked, and joined
/// where both end. Variables that are declared outside a function are checked where the function is
/// called: there the record of its body is replayed.
///
/// A statement takes time linear in its expressions, a branch in the variables that it changes, and
/// a call in its arguments and the outer variables that the function accesses.
class SlcCheckUsage : public SlcCodeWalker {
public:
    /// Creates the record of a body.
    explicit SlcCheckUsage(SlcPtr<SlcSemanticError> errors);
    /// Creates the record of a branch, inside that of `parent`, which must outlive it.
    explicit SlcCheckUsage(SlcCheckUsage& parent);

    /// Visits the next expression, condition, declaration or jump, after the other passes have
    /// finished with it. A body starts with its formals. Ignores code that follows a jump in the
    /// same branch.
    void operator()(SlcSyntaxNode* node);
    /// Ends the walk of the branch and undoes its changes until `Promote` joins the branches of the
    /// statement. Between the two calls only another branch of the statement may be walked.
    void SetAside();

    /// Ends a statement and joins its branches, which have been set aside.
    void Promote(SlcIfThenElseStmtNode* node, SlcCheckUsage& thenBranch, SlcCheckUsage& elseBranch);
    void Promote(SlcIfThenStmtNode* node, SlcCheckUsage& branch);
    void Promote(SlcLoopStmtNode* node, SlcCheckUsage& body);

private:
    static constexpr int k_outside = -1;  // level of variables that are declared outside the body

    /// A variable in one body.
    struct Variable {
        Variable(SlcVarSymbolEntry* variable, int declaredAt) : entry(variable), level(declaredAt)
        {
        }

        SlcVarSymbolEntry* entry;
        int level;                  // of the branch that declares it, or `k_outside`
        int changedAt = k_outside;  // level of the innermost branch that has recorded a change
        SlcVariableUsage outer;     // state if it is declared outside; otherwise the entry holds it
        const SlcVariableUsage* elsewhere =
            nullptr;  // while two branches are joined: state after the first; otherwise null
    };
    struct Change {
        Variable* variable;
        SlcVariableUsage usage;  // before the branch; once that is set aside, after the branch
        int changedAt;           // `Variable::changedAt` before the branch
    };
    struct Body {
        std::unordered_map<const SlcVarSymbolEntry*, Variable> variables;
        std::multimap<std::string_view, Variable*> outer;  // by name, the order of reports
    };

    using SlcCodeWalker::Case;
    void Case(SlcDefExprNode* node) override;
    void Case(SlcLValueNode* node) override;
    void Case(SlcIdentExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcAssignExprNode* node) override;
    void Case(SlcBinOpExprNode* node) override;
    void Case(SlcCondExprNode* node) override;
    void Case(SlcLoopModStmtNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Default(SlcSyntaxNode* node) override;

    /// Returns the variable that `named` is or, if `extern`, refers to; null if that is always set
    /// or has been reported.
    [[nodiscard]] Variable* Find(const SlcPtr<SlcVarSymbolEntry>& named);
    [[nodiscard]] Variable* Find(SlcVarSymbolEntry* entry);
    /// Returns the state of the variable at the current point of the walk.
    [[nodiscard]] static SlcVariableUsage& UsageOf(Variable& variable);
    /// True if reads of the variable are reported here. Those of outer variables and of output
    /// formals are reported where the function is called.
    [[nodiscard]] static bool IsCheckedHere(const Variable& variable);
    /// Records the state of a variable; call it before each change.
    void NoteChange(Variable& variable);
    /// Records the state of a variable, then changes it to `usage`.
    void SetUsage(Variable& variable, const SlcVariableUsage& usage);

    /// Records a write, which with `maybe` may not be executed. This function and the next one
    /// ignore a null variable.
    void VarIsModifiedInTable(Variable* variable, bool maybe);
    /// Records a read at `expr`, which with `maybe` may not be executed. Warns if the variable may
    /// not be set and is checked here.
    void VarIsAccessedInTable(Variable* variable, bool maybe, SlcExprNode* expr);
    /// Warns at `expr` that the variable is not, or with `maybe` may not be, set.
    void LogAccessError(const SlcExprNode* expr, const Variable& variable, bool maybe);

    /// Joins two branches, exactly one of which runs.
    void PromoteUsage(SlcCheckUsage& first, SlcCheckUsage& second);
    /// Merges a branch that runs, or with `maybe` may run.
    void PromoteUsage(SlcCheckUsage& branch, bool maybe);
    /// Replays the accesses of a called function to outer variables, as accesses at `call`.
    void Replay(SlcCheckUsage& function, SlcExprNode* call);
    /// Walks the part of an output argument that is read: the index of an element. An argument that
    /// cannot be written is walked as a whole.
    void WalkPlace(SlcExprNode& argument);
    /// Transfers the state of `formal`, an output of a called function, to its argument, which may
    /// be null. Warns if the function reads the formal and the argument may not be set.
    void PassOutput(SlcVarSymbolEntry& formal, Variable* argument, const SlcExprNode* call);

    SlcPtr<SlcSemanticError> m_errors;
    std::shared_ptr<Body> m_body;   // shared by the records of one body
    int m_level;                    // number of enclosing branches
    int m_breakLevel = 0;           // most loops that one jump of this branch leaves or continues
    bool m_stopped = false;         // after a jump: the rest of this branch does not run
    std::vector<Change> m_changes;  // of variables that the branch does not declare
};
