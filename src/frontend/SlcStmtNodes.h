#pragma once

// Statements without a loop. Checked in SlcCheckStatements.cpp, lowered in
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
    /// Its name in reports and dumps.
    [[nodiscard]] virtual std::string ToString() const = 0;
    [[nodiscard]] SlcStmtNode* AsStmt() final { return this; }
};

/// `{ ... }`: a block, which is a scope, or an empty statement.
class SlcStmtsNode : public SlcVisitable<SlcStmtsNode, SlcStmtNode> {
public:
    using SlcVisitable::SlcVisitable;
    /// The list has the position of its first statement.
    explicit SlcStmtsNode(std::unique_ptr<SlcStmtNode> first);
    void AddStatement(std::unique_ptr<SlcStmtNode> statement);
    [[nodiscard]] const std::vector<std::unique_ptr<SlcStmtNode>>& GetStatements() const;
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "statements"; }

private:
    std::vector<std::unique_ptr<SlcStmtNode>> m_statements;
};

/// `x = value;` and the like: the value of the expression is dropped.
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

/// `name(arguments);`: a value, if the call has one, is dropped.
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

/// `return value;`, in functions alone. Of a body that some points leave early the others go on.
class SlcReturnStmtNode : public SlcVisitable<SlcReturnStmtNode, SlcStmtNode> {
public:
    SlcReturnStmtNode(const SlcPosition& position, std::unique_ptr<SlcExprNode> value);
    /// Never null: a procedure returns at its end.
    [[nodiscard]] SlcExprNode* GetValue() const { return m_value.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "return"; }

private:
    std::unique_ptr<SlcExprNode> m_value;
};

/// `if (condition) then`. If the condition varies, the branch runs for the points where it holds.
class SlcIfThenStmtNode : public SlcVisitable<SlcIfThenStmtNode, SlcStmtNode> {
public:
    SlcIfThenStmtNode(const SlcPosition& position, std::unique_ptr<SlcRelationNode> condition,
                      std::unique_ptr<SlcStmtNode> thenBranch);
    ~SlcIfThenStmtNode() override;
    [[nodiscard]] SlcRelationNode* GetCondition() const { return m_condition.get(); }
    [[nodiscard]] SlcStmtNode* GetThen() const { return m_then.get(); }
    /// Some `break` or `continue` below leaves this statement; set by the shader's fact walk.
    [[nodiscard]] bool ContainsBreakOrContinue() const { return m_containsBreakOrContinue; }
    void SetContainsBreakOrContinue(bool contains) { m_containsBreakOrContinue = contains; }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "if-then"; }

private:
    std::unique_ptr<SlcRelationNode> m_condition;
    std::unique_ptr<SlcStmtNode> m_then;
    bool m_containsBreakOrContinue = false;
};

/// `if (condition) then else otherwise`. Walkers that know only the class above see its condition
/// and its first branch: `WalkIn` goes through all three.
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

/// `float x = 1, y;`: a declaration among statements. Later statements see the names.
class SlcVarDefsStmtNode : public SlcVisitable<SlcVarDefsStmtNode, SlcStmtNode> {
public:
    SlcVarDefsStmtNode(const SlcPosition& position, std::unique_ptr<SlcVarDefsNode> declaration);
    [[nodiscard]] SlcVarDefsNode* GetVarDefs() const { return m_declaration.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "Var defs stmt"; }

private:
    std::unique_ptr<SlcVarDefsNode> m_declaration;
};

/// A function defined among statements, which later statements may call.
class SlcFuncDefStmtNode : public SlcVisitable<SlcFuncDefStmtNode, SlcStmtNode> {
public:
    SlcFuncDefStmtNode(const SlcPosition& position, std::unique_ptr<SlcFuncDefNode> function);
    [[nodiscard]] SlcFuncDefNode* GetFuncDef() const { return m_function.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] std::string ToString() const override { return "Func def stmt"; }

private:
    std::unique_ptr<SlcFuncDefNode> m_function;
};
