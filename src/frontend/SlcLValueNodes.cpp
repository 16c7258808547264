// The left side of an assignment is not an expression: it has no value. So a walker that looks for
// reads among the expressions does not find a variable that is only written.
//
// Tested by tests/frontend/TreeShapeTest.cpp.

#include "frontend/SlcLValueNodes.h"

#include <utility>

SlcLValueNode::SlcLValueNode(const SlcPosition& position, SlcIdentNode* ident)
    : SlcSyntaxNode(position),
      m_ident(ident)
{
}

SlcLValueNode::~SlcLValueNode() = default;

void SlcLValueNode::SetSymbolEntry(SlcPtr<SlcVarSymbolEntry> entry)
{
    m_entry = std::move(entry);
}

void SlcIdentLValueNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(GetIdent(), walker);
}

SlcArrayRefLValueNode::SlcArrayRefLValueNode(const SlcPosition& position, SlcIdentNode* ident,
                                             std::unique_ptr<SlcExprNode> index)
    : SlcVisitable(position, ident),
      m_index(std::move(index))
{
    Adopt(m_index.get());
}

void SlcArrayRefLValueNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(GetIdent(), walker);
    Walk(m_index.get(), walker);
}
