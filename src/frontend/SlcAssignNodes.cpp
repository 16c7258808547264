// The five assignments differ only in their operator. `x += y` is not rewritten as `x = x + y`,
// since the index in `a[i] += y` must be evaluated only once.
//
// Tested by tests/frontend/TreeShapeTest.cpp.

#include "frontend/SlcAssignNodes.h"

#include <utility>

SlcAssignExprNode::SlcAssignExprNode(std::unique_ptr<SlcLValueNode> lvalue,
                                     std::unique_ptr<SlcExprNode> value)
    : m_lvalue(std::move(lvalue)),
      m_value(std::move(value))
{
    AdoptFirst(m_lvalue.get());
    Adopt(m_value.get());
}

const SlcPtr<SlcVarSymbolEntry>& SlcAssignExprNode::GetSymbolEntry() const
{
    return m_lvalue->GetSymbolEntry();
}

void SlcAssignExprNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_lvalue.get(), walker);
    Walk(m_value.get(), walker);
}
