#pragma once

#include <memory>

#include "symbols/SlcSymbolTable.h"

class SlcIfThenElseStmtNode;
class SlcIfThenStmtNode;
class SlcLoopStmtNode;
class SlcSyntaxNode;

/// What one branch of the code reads and sets of the variables around it, from which reads of
/// variables that are not set are found.
///
/// `SlcCheckSemantics` drives it in the order of execution: it hands in each expression once the
/// other passes have finished with it, walks each branch and each loop body with a record of its
/// own, and merges that record into the one around when the statement ends. Without a record the
/// compile does the same but for the warnings.
class SlcUsageRecord {
public:
    virtual ~SlcUsageRecord() = default;

    /// An empty record of a branch inside this one's; `base` is the scope that surrounds it. It
    /// must not outlive this one.
    [[nodiscard]] virtual std::unique_ptr<SlcUsageRecord>
    CreateBranch(SlcPtr<SlcSymbolTable> base) = 0;
    /// An empty record with none around it, for a body whose outer scope is `base`.
    [[nodiscard]] virtual std::unique_ptr<SlcUsageRecord>
    CreateBody(SlcPtr<SlcSymbolTable> base) = 0;

    /// Takes in an expression, condition, declaration or jump that is reached next; `table` is
    /// the scope in which it stands.
    virtual void Check(SlcSyntaxNode* node, const SlcPtr<SlcSymbolTable>& table) = 0;

    /// The end of a statement that stands in the scope `table`: its branches are merged in.
    virtual void Promote(SlcIfThenElseStmtNode* node, const SlcPtr<SlcSymbolTable>& table,
                         SlcUsageRecord& thenBranch, SlcUsageRecord& elseBranch) = 0;
    virtual void Promote(SlcIfThenStmtNode* node, const SlcPtr<SlcSymbolTable>& table,
                         SlcUsageRecord& branch) = 0;
    virtual void Promote(SlcLoopStmtNode* node, const SlcPtr<SlcSymbolTable>& table,
                         SlcUsageRecord& body) = 0;
};
