// Trees are built from the leaves up, and a node updates its height with each child that it adopts.
// So no walk is needed to determine whether a tree is too high for a walk.
//
// Most nodes that begin with a child, such as `a + b`, take the position of that child, so that a
// report about the node names the line on which its text begins.
//
// Tested by tests/frontend/TreeShapeTest.cpp and DeepInputTest.cpp.

#include "frontend/SlcSyntaxNode.h"

#include <algorithm>
#include <utility>

namespace {

const std::string* EmptyFileName()
{
    static const std::string name;
    return &name;
}

}  // namespace

SlcSyntaxNode::SlcSyntaxNode() : m_file(EmptyFileName()) {}

SlcSyntaxNode::SlcSyntaxNode(const SlcPosition& position)
    : m_line(position.line),
      m_column(position.column),
      m_file(position.file ? position.file : EmptyFileName())
{
}

SlcSyntaxNode::~SlcSyntaxNode() = default;

void SlcSyntaxNode::WalkIn(SlcCodeWalker*) {}

SlcPosition SlcSyntaxNode::Position() const
{
    return {GetNoLine(), GetNoColumn(), GetFileParsed()};
}

void SlcSyntaxNode::SetAnnotation(SlcPtr<SlcAnnotation> annotation)
{
    m_annotation = std::move(annotation);
}

void SlcSyntaxNode::Adopt(const SlcSyntaxNode* child)
{
    if (child)
        m_height = std::max(m_height, child->m_height + 1);
}

void SlcSyntaxNode::AdoptFirst(const SlcSyntaxNode* child)
{
    Adopt(child);
    if (child) {
        m_line = child->GetNoLine();
        m_column = child->GetNoColumn();
        m_file = child->GetFileParsed();
    }
}
