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

/// Warns of reads of variables that are not set yet. It walks a body in the order of execution,
/// with a record for the body and one for each branch and loop in it, which is merged into the
/// record around it where the branch ends.
///
/// Each variable has one state, that of the point that the walk has reached. A record keeps what
/// its branch has changed, so that the state can be taken back while another branch is walked, and
/// met where both end. Variables further out than the body are judged where the body's function is
/// called: there its record is replayed.
///
/// A statement costs its expressions, and each branch and call the variables that it changes.
class SlcCheckUsage : public SlcCodeWalker {
public:
    /// The record of a body.
    explicit SlcCheckUsage(SlcPtr<SlcSemanticError> errors);
    /// That of a branch in the one of `parent`, which must outlive it.
    explicit SlcCheckUsage(SlcCheckUsage& parent);

    /// Takes in an expression, condition, declaration or jump that is reached next, once the other
    /// passes have finished with it. A body starts with its formals.
    void operator()(SlcSyntaxNode* node);
    /// The branch has been walked: what it has changed is taken back until it is promoted. Another
    /// branch of the statement, or `Promote`, comes next.
    void SetAside();

    /// The end of a statement: its branches, which have been set aside, count from here on.
    void Promote(SlcIfThenElseStmtNode* node, SlcCheckUsage& thenBranch, SlcCheckUsage& elseBranch);
    void Promote(SlcIfThenStmtNode* node, SlcCheckUsage& branch);
    void Promote(SlcLoopStmtNode* node, SlcCheckUsage& body);

private:
    static constexpr int k_outside = -1;  // level of variables further out than the body

    /// A variable as one body sees it.
    struct Variable {
        Variable(SlcVarSymbolEntry* variable, int declaredAt) : entry(variable), level(declaredAt)
        {
        }

        SlcVarSymbolEntry* entry;
        int level;                  // of the branch that declares it, or `k_outside`
        int changedAt = k_outside;  // level of the innermost branch that has noted a change
        SlcVariableUsage outer;     // if it is further out; else the entry has its usage
        const SlcVariableUsage* elsewhere = nullptr;  // in the other of two branches that meet
    };
    struct Change {
        Variable* variable;
        SlcVariableUsage usage;  // before the branch, or at its end once it has been set aside
        int changedAt;           // of the variable, before the branch
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

    /// The variable that an alias refers to; null for one that is always set or has been reported.
    [[nodiscard]] Variable* Find(const SlcPtr<SlcVarSymbolEntry>& named);
    [[nodiscard]] Variable* Find(SlcVarSymbolEntry* entry);
    /// Its state at the point that the walk has reached.
    [[nodiscard]] static SlcVariableUsage& UsageOf(Variable& variable);
    /// Its reads are reported here, and not where the function is called.
    [[nodiscard]] static bool IsJudgedHere(const Variable& variable);
    /// Call it before each change of a usage.
    void NoteChange(Variable& variable);
    /// The variable is in that state from here on.
    void SetUsage(Variable& variable, const SlcVariableUsage& usage);

    /// It is written, or perhaps. Null is passed over, here and below.
    void VarIsModifiedInTable(Variable* variable, bool maybe);
    /// It is read at `expr`, which is reported there if it may not be set.
    void VarIsAccessedInTable(Variable* variable, bool maybe, SlcExprNode* expr);
    /// A warning at `expr` that the variable is not, or may not be, set.
    void LogAccessError(const SlcExprNode* expr, const Variable& variable, bool maybe);

    /// Two branches of which one runs.
    void PromoteUsage(SlcCheckUsage& first, SlcCheckUsage& second);
    /// One that runs, or perhaps.
    void PromoteUsage(SlcCheckUsage& branch, bool maybe);
    /// Replays the accesses of a called function to outer variables.
    void Replay(SlcCheckUsage& function, SlcExprNode* call);
    /// Checks the reads that find the place of an argument that is written to, such as an index.
    void WalkPlace(SlcExprNode& argument);
    /// `formal` is an output of a called function.
    void PassOutput(SlcVarSymbolEntry& formal, Variable* argument, const SlcExprNode* call);

    SlcPtr<SlcSemanticError> m_errors;
    std::shared_ptr<Body> m_body;   // shared by the records of one body
    int m_level;                    // branches around this one
    int m_breakLevel = 0;           // loops that a jump of this branch leaves or continues
    bool m_stopped = false;         // after a jump: the rest of this branch does not run
    std::vector<Change> m_changes;  // of variables that the branch does not declare
};
