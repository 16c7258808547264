// A call keeps the name as written. The checks add the entry of the function, once they have
// selected an overload by the types of the arguments and the type that the context requires.
//
// Tested by tests/frontend/TreeShapeTest.cpp.

#include "frontend/SlcCallNodes.h"

#include <algorithm>
#include <utility>

void SlcProcArgsNode::AddArg(std::unique_ptr<SlcExprNode> argument)
{
    if (m_arguments.empty())
        AdoptFirst(argument.get());
    else
        Adopt(argument.get());
    m_arguments.push_back(std::move(argument));
}

const std::vector<std::unique_ptr<SlcExprNode>>& SlcProcArgsNode::GetArgs() const
{
    return m_arguments;
}

void SlcProcArgsNode::WalkIn(SlcCodeWalker* walker)
{
    for (const auto& argument : m_arguments)
        Walk(argument.get(), walker);
}

SlcProcCallExprNode::SlcProcCallExprNode(const SlcPosition& position, SlcIdentNode* ident,
                                         std::unique_ptr<SlcProcArgsNode> arguments)
    : SlcVisitable(position),
      m_ident(ident),
      m_arguments(std::move(arguments))
{
    Adopt(m_arguments.get());
}

SlcProcCallExprNode::~SlcProcCallExprNode() = default;

bool SlcProcCallExprNode::IsConstExpr() const
{
    const auto& arguments = m_arguments->GetArgs();
    return std::all_of(arguments.begin(), arguments.end(),
                       [](const auto& argument) { return argument->IsConstExpr(); });
}

void SlcProcCallExprNode::SetSymbolEntry(SlcPtr<SlcFuncSymbolEntry> entry)
{
    m_entry = std::move(entry);
}

void SlcProcCallExprNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_ident, walker);
    Walk(m_arguments.get(), walker);
}
