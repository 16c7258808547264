// An access has a special syntax, `texture(name[channel], ...)`: the name is an argument that must
// be a string, and the channel follows it in brackets. If the channel is omitted, the parser
// inserts channel 0, so that later stages handle one form.
//
// Tested by tests/frontend/TreeShapeTest.cpp.

#include "frontend/SlcTextureNodes.h"

#include <utility>

SlcTextureFilenameNode::SlcTextureFilenameNode(std::unique_ptr<SlcExprNode> name)
    : m_name(std::move(name))
{
    AdoptFirst(m_name.get());
}

SlcTextureFilenameNode::SlcTextureFilenameNode(const SlcPosition& position,
                                               std::unique_ptr<SlcExprNode> name)
    : SlcVisitable(position),
      m_name(std::move(name))
{
    Adopt(m_name.get());
}

void SlcTextureFilenameNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_name.get(), walker);
}

SlcChannelNode::SlcChannelNode(std::unique_ptr<SlcExprNode> channel) : m_channel(std::move(channel))
{
    AdoptFirst(m_channel.get());
}

void SlcChannelNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_channel.get(), walker);
}

int SlcTextureArgsNode::GetNoLine() const
{
    return m_arguments.empty() ? SlcSyntaxNode::GetNoLine() : m_arguments.front()->GetNoLine();
}

int SlcTextureArgsNode::GetNoColumn() const
{
    return m_arguments.empty() ? SlcSyntaxNode::GetNoColumn() : m_arguments.front()->GetNoColumn();
}

void SlcTextureArgsNode::AddTextureArg(std::unique_ptr<SlcExprNode> argument)
{
    Adopt(argument.get());
    m_arguments.push_back(std::move(argument));
}

const std::vector<std::unique_ptr<SlcExprNode>>& SlcTextureArgsNode::GetArgs() const
{
    return m_arguments;
}

void SlcTextureArgsNode::WalkIn(SlcCodeWalker* walker)
{
    for (const auto& argument : m_arguments)
        Walk(argument.get(), walker);
}

SlcTextureExprNode::SlcTextureExprNode(const SlcPosition& position,
                                       std::unique_ptr<SlcTextureTypeNode> kind,
                                       std::unique_ptr<SlcTextureFilenameNode> filename,
                                       std::unique_ptr<SlcChannelNode> channel,
                                       std::unique_ptr<SlcTextureArgsNode> arguments)
    : SlcVisitable(position),
      m_kind(std::move(kind)),
      m_filename(std::move(filename)),
      m_channel(std::move(channel)),
      m_arguments(std::move(arguments))
{
    Adopt(m_kind.get());
    Adopt(m_filename.get());
    Adopt(m_channel.get());
    Adopt(m_arguments.get());
}

void SlcTextureExprNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_kind.get(), walker);
    Walk(m_filename.get(), walker);
    Walk(m_channel.get(), walker);
    Walk(m_arguments.get(), walker);
}
