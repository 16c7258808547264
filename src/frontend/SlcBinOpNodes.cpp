// All binary arithmetic operators share one structure; walkers distinguish them by the operations
// of the base, such as `IsAdd`.
// Both sides are always evaluated, the left one first. The operators that short-circuit, `&&` and
// `||`, are relations.
//
// Tested by tests/frontend/TreeShapeTest.cpp.

#include "frontend/SlcBinOpNodes.h"

#include <utility>

SlcBinOpExprNode::SlcBinOpExprNode(std::unique_ptr<SlcExprNode> left,
                                   std::unique_ptr<SlcExprNode> right)
    : m_left(std::move(left)),
      m_right(std::move(right))
{
    AdoptFirst(m_left.get());
    Adopt(m_right.get());
}

bool SlcBinOpExprNode::IsConstExpr() const
{
    return m_left->IsConstExpr() && m_right->IsConstExpr();
}

void SlcBinOpExprNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_left.get(), walker);
    Walk(m_right.get(), walker);
}
