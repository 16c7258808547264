// Relations are a separate family, since the language has no values for them: they occur only in
// conditions. So walkers of expressions need not check whether a value is a comparison.
//
// Tested by tests/frontend/TreeShapeTest.cpp.

#include "frontend/SlcRelationNodes.h"

#include <utility>

SlcCompOpNode::SlcCompOpNode(std::unique_ptr<SlcExprNode> left, std::unique_ptr<SlcExprNode> right)
    : m_left(std::move(left)),
      m_right(std::move(right))
{
    AdoptFirst(m_left.get());
    Adopt(m_right.get());
}

void SlcCompOpNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_left.get(), walker);
    Walk(m_right.get(), walker);
}

SlcLogOpNode::SlcLogOpNode(std::unique_ptr<SlcRelationNode> left,
                           std::unique_ptr<SlcRelationNode> right)
    : m_left(std::move(left)),
      m_right(std::move(right))
{
    AdoptFirst(m_left.get());
    Adopt(m_right.get());
}

void SlcLogOpNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_left.get(), walker);
    Walk(m_right.get(), walker);
}

SlcNotRelNode::SlcNotRelNode(const SlcPosition& position, std::unique_ptr<SlcRelationNode> relation)
    : SlcVisitable(position),
      m_relation(std::move(relation))
{
    Adopt(m_relation.get());
}

void SlcNotRelNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_relation.get(), walker);
}
