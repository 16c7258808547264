// A block takes the position of its first statement; the parser passes the position of an empty
// block. Branches and bodies of loops are statements of any class. Only those in braces, and `;`,
// are blocks, which have a scope.
//
// Tested by tests/frontend/TreeShapeTest.cpp.

#include "frontend/SlcStmtNodes.h"

#include <utility>

#include "frontend/SlcAssignNodes.h"
#include "frontend/SlcCallNodes.h"
#include "frontend/SlcRelationNodes.h"

SlcStmtsNode::SlcStmtsNode(std::unique_ptr<SlcStmtNode> first)
{
    AdoptFirst(first.get());
    m_statements.push_back(std::move(first));
}

void SlcStmtsNode::AddStatement(std::unique_ptr<SlcStmtNode> statement)
{
    Adopt(statement.get());
    m_statements.push_back(std::move(statement));
}

const std::vector<std::unique_ptr<SlcStmtNode>>& SlcStmtsNode::GetStatements() const
{
    return m_statements;
}

void SlcStmtsNode::WalkIn(SlcCodeWalker* walker)
{
    for (const auto& statement : m_statements)
        Walk(statement.get(), walker);
}

SlcAssignStmtNode::SlcAssignStmtNode(const SlcPosition& position,
                                     std::unique_ptr<SlcAssignExprNode> assignment)
    : SlcVisitable(position),
      m_assignment(std::move(assignment))
{
    Adopt(m_assignment.get());
}

SlcAssignStmtNode::~SlcAssignStmtNode() = default;

void SlcAssignStmtNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_assignment.get(), walker);
}

SlcProcCallStmtNode::SlcProcCallStmtNode(const SlcPosition& position,
                                         std::unique_ptr<SlcProcCallExprNode> call)
    : SlcVisitable(position),
      m_call(std::move(call))
{
    Adopt(m_call.get());
}

SlcProcCallStmtNode::~SlcProcCallStmtNode() = default;

void SlcProcCallStmtNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_call.get(), walker);
}

SlcReturnStmtNode::SlcReturnStmtNode(const SlcPosition& position,
                                     std::unique_ptr<SlcExprNode> value)
    : SlcVisitable(position),
      m_value(std::move(value))
{
    Adopt(m_value.get());
}

void SlcReturnStmtNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_value.get(), walker);
}

SlcIfThenStmtNode::SlcIfThenStmtNode(const SlcPosition& position,
                                     std::unique_ptr<SlcRelationNode> condition,
                                     std::unique_ptr<SlcStmtNode> thenBranch)
    : SlcVisitable(position),
      m_condition(std::move(condition)),
      m_then(std::move(thenBranch))
{
    Adopt(m_condition.get());
    Adopt(m_then.get());
}

SlcIfThenStmtNode::~SlcIfThenStmtNode() = default;

void SlcIfThenStmtNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_condition.get(), walker);
    Walk(m_then.get(), walker);
}

SlcIfThenElseStmtNode::SlcIfThenElseStmtNode(const SlcPosition& position,
                                             std::unique_ptr<SlcRelationNode> condition,
                                             std::unique_ptr<SlcStmtNode> thenBranch,
                                             std::unique_ptr<SlcStmtNode> elseBranch)
    : SlcVisitable(position, std::move(condition), std::move(thenBranch)),
      m_else(std::move(elseBranch))
{
    Adopt(m_else.get());
}

void SlcIfThenElseStmtNode::WalkIn(SlcCodeWalker* walker)
{
    SlcIfThenStmtNode::WalkIn(walker);
    Walk(m_else.get(), walker);
}

SlcVarDefsStmtNode::SlcVarDefsStmtNode(const SlcPosition& position,
                                       std::unique_ptr<SlcVarDefsNode> declaration)
    : SlcVisitable(position),
      m_declaration(std::move(declaration))
{
    Adopt(m_declaration.get());
}

void SlcVarDefsStmtNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_declaration.get(), walker);
}

SlcFuncDefStmtNode::SlcFuncDefStmtNode(const SlcPosition& position,
                                       std::unique_ptr<SlcFuncDefNode> function)
    : SlcVisitable(position),
      m_function(std::move(function))
{
    Adopt(m_function.get());
}

void SlcFuncDefStmtNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_function.get(), walker);
}
