#pragma once

// Statements other than loops, light statements, `break` and `continue`. They are checked in
// SlcCheckStatements.cpp, local functions in SlcCheckSemantics.cpp, and lowered in
// SlcGenInterCodeStatements.cpp, SlcGenInterCodeConditions.cpp and SlcGenInterCodeBodies.cpp.

#include <memory>
#include <string>
#include <vector>

#include "frontend/SlcDefinitionNodes.h"
#include "frontend/SlcExprNodes.h"

class SlcAssignExprNode;
class SlcProcCallExprNode;
class SlcRelationNode;

/// Base of statements.
class SlcStmtNode : public SlcSyntaxNode {
public:
    using SlcSyntaxNode::SlcSyntaxNode;
    /// Returns the name of the kind of statement. Reports contain those of `break` and `continue`.
    [[nodiscard]] virtual std::string ToString() const = 0;
    [[nodiscard]] SlcStmtNode* AsStmt() final { return this; }
};

/// `{ ... }`: a block, which is a scope. An empty block also stands for `;` and for a statement
/// that the parser has rejected.
class SlcStmtsNode : public SlcVisitable<SlcStmtsNode, SlcStmtNode> {
public:
    using SlcVisitable::SlcVisitable;
    /// The block takes the position of `first`.
    explicit SlcStmtsNode(std::unique_ptr<SlcStmtNode> first);
    void AddStatement(std::unique_ptr<SlcStmtNode> statement);
    [[nodiscard]] const std::vector<std::unique_ptr<SlcStmtNode>>& GetStatements() const;
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "statements"; }

private:
    std::vector<std::unique_ptr<SlcStmtNode>> m_statements;
};

/// `x = value;`, `x += value;` and the like: the value of the expression is unused.
class SlcAssignStmtNode : public SlcVisitable<SlcAssignStmtNode, SlcStmtNode> {
public:
    SlcAssignStmtNode(const SlcPosition& position, std::unique_ptr<SlcAssignExprNode> assignment);
    ~SlcAssignStmtNode() override;
    [[nodiscard]] SlcAssignExprNode* GetAssignment() const { return m_assignment.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "assignment statement"; }

private:
    std::unique_ptr<SlcAssignExprNode> m_assignment;
};

/// `name(arguments);`: the value of the call, if it has one, is unused.
class SlcProcCallStmtNode : public SlcVisitable<SlcProcCallStmtNode, SlcStmtNode> {
public:
    SlcProcCallStmtNode(const SlcPosition& position, std::unique_ptr<SlcProcCallExprNode> call);
    ~SlcProcCallStmtNode() override;
    [[nodiscard]] SlcProcCallExprNode* GetCall() const { return m_call.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "proc call statement"; }

private:
    std::unique_ptr<SlcProcCallExprNode> m_call;
};

/// `return value;`, only in functions. Points that have not returned continue in the body.
class SlcReturnStmtNode : public SlcVisitable<SlcReturnStmtNode, SlcStmtNode> {
public:
    SlcReturnStmtNode(const SlcPosition& position, std::unique_ptr<SlcExprNode> value);
    /// Never null: the grammar requires a value. A `void` function returns only at its end.
    [[nodiscard]] SlcExprNode* GetValue() const { return m_value.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "return"; }

private:
    std::unique_ptr<SlcExprNode> m_value;
};

/// `if (condition) then`. Under a varying condition, the branch runs only for the points where the
/// condition holds.
class SlcIfThenStmtNode : public SlcVisitable<SlcIfThenStmtNode, SlcStmtNode> {
public:
    SlcIfThenStmtNode(const SlcPosition& position, std::unique_ptr<SlcRelationNode> condition,
                      std::unique_ptr<SlcStmtNode> thenBranch);
    ~SlcIfThenStmtNode() override;
    [[nodiscard]] SlcRelationNode* GetCondition() const { return m_condition.get(); }
    [[nodiscard]] SlcStmtNode* GetThen() const { return m_then.get(); }
    /// True if a `break`, `continue` or `return` in this statement can leave it. Set by
    /// `SlcMarkLeaves` before the lowering, except in functions that are never called.
    [[nodiscard]] bool ContainsBreakOrContinue() const { return m_containsBreakOrContinue; }
    void SetContainsBreakOrContinue(bool contains) { m_containsBreakOrContinue = contains; }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "if-then"; }

private:
    std::unique_ptr<SlcRelationNode> m_condition;
    std::unique_ptr<SlcStmtNode> m_then;
    bool m_containsBreakOrContinue = false;
};

/// `if (condition) then else otherwise`. A walker's `Case` for `SlcIfThenStmtNode` does not handle
/// this node, although that is its base class.
class SlcIfThenElseStmtNode : public SlcVisitable<SlcIfThenElseStmtNode, SlcIfThenStmtNode> {
public:
    SlcIfThenElseStmtNode(const SlcPosition& position, std::unique_ptr<SlcRelationNode> condition,
                          std::unique_ptr<SlcStmtNode> thenBranch,
                          std::unique_ptr<SlcStmtNode> elseBranch);
    [[nodiscard]] SlcStmtNode* GetElse() const { return m_else.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "if-then-else"; }

private:
    std::unique_ptr<SlcStmtNode> m_else;
};

/// `float x = 1, y;`: a declaration among statements. Later statements of the block see the names.
class SlcVarDefsStmtNode : public SlcVisitable<SlcVarDefsStmtNode, SlcStmtNode> {
public:
    SlcVarDefsStmtNode(const SlcPosition& position, std::unique_ptr<SlcVarDefsNode> declaration);
    [[nodiscard]] SlcVarDefsNode* GetVarDefs() const { return m_declaration.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "Var defs stmt"; }

private:
    std::unique_ptr<SlcVarDefsNode> m_declaration;
};

/// A function defined among statements, which later statements of the block may call.
class SlcFuncDefStmtNode : public SlcVisitable<SlcFuncDefStmtNode, SlcStmtNode> {
public:
    SlcFuncDefStmtNode(const SlcPosition& position, std::unique_ptr<SlcFuncDefNode> function);
    [[nodiscard]] SlcFuncDefNode* GetFuncDef() const { return m_function.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "Func def stmt"; }

private:
    std::unique_ptr<SlcFuncDefNode> m_function;
};
