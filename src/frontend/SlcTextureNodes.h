#pragma once

// Texture accesses. Their arguments are checked by SlcResolveTexture; SlcTextureLowering and
// SlcGenInterCodeExpressions.cpp lower them.

#include <memory>
#include <string>
#include <vector>

#include "frontend/SlcExprNodes.h"

/// Base of the three kinds of texture access.
class SlcTextureTypeNode : public SlcSyntaxNode {
public:
    using SlcSyntaxNode::SlcSyntaxNode;
    [[nodiscard]] virtual bool IsTexture() const { return false; }
    [[nodiscard]] virtual bool IsEnvironment() const { return false; }
    [[nodiscard]] virtual bool IsShadow() const { return false; }
    [[nodiscard]] virtual std::string ToString() const = 0;
};

/// `texture`: looked up by two coordinates, `s` and `t` if none are given, or by the coordinates of
/// four corners.
class SlcTextureTypeTextureNode
    : public SlcVisitable<SlcTextureTypeTextureNode, SlcTextureTypeNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsTexture() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return "texture"; }
};

/// `environment`: looked up by a direction, or by four.
class SlcTextureTypeEnvNode : public SlcVisitable<SlcTextureTypeEnvNode, SlcTextureTypeNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsEnvironment() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return "environment"; }
};

/// `shadow`: looked up by a point, or by four; the value is the fraction of the light that is
/// blocked there.
class SlcTextureTypeShadowNode : public SlcVisitable<SlcTextureTypeShadowNode, SlcTextureTypeNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsShadow() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return "shadow"; }
};

/// The first argument: the texture's name, given as a variable, an array element or a literal.
class SlcTextureFilenameNode : public SlcVisitable<SlcTextureFilenameNode, SlcSyntaxNode> {
public:
    explicit SlcTextureFilenameNode(std::unique_ptr<SlcExprNode> name);
    SlcTextureFilenameNode(const SlcPosition& position, std::unique_ptr<SlcExprNode> name);
    [[nodiscard]] SlcExprNode* GetName() const { return m_name.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcExprNode> m_name;
};

/// `[channel]` after the name; channel 0 if it is omitted.
class SlcChannelNode : public SlcVisitable<SlcChannelNode, SlcSyntaxNode> {
public:
    explicit SlcChannelNode(std::unique_ptr<SlcExprNode> channel);
    [[nodiscard]] SlcExprNode* GetChannel() const { return m_channel.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcExprNode> m_channel;
};

/// The arguments after the name: coordinates, then name and value pairs.
class SlcTextureArgsNode : public SlcVisitable<SlcTextureArgsNode, SlcSyntaxNode> {
public:
    /// Return the position of the first argument; 0 if there is none. The node has no file name.
    [[nodiscard]] int GetNoLine() const override;
    [[nodiscard]] int GetNoColumn() const override;
    void AddTextureArg(std::unique_ptr<SlcExprNode> argument);
    [[nodiscard]] const std::vector<std::unique_ptr<SlcExprNode>>& GetArgs() const;
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::vector<std::unique_ptr<SlcExprNode>> m_arguments;
};

/// `texture(name[channel], coordinates, "parameter", value, ...)`; `environment` and `shadow` have
/// the same form.
class SlcTextureExprNode : public SlcVisitable<SlcTextureExprNode, SlcExprNode> {
public:
    /// `filename` is null only after a reported error.
    SlcTextureExprNode(const SlcPosition& position, std::unique_ptr<SlcTextureTypeNode> kind,
                       std::unique_ptr<SlcTextureFilenameNode> filename,
                       std::unique_ptr<SlcChannelNode> channel,
                       std::unique_ptr<SlcTextureArgsNode> arguments);
    [[nodiscard]] SlcTextureTypeNode* GetKind() const { return m_kind.get(); }
    [[nodiscard]] SlcTextureFilenameNode* GetFilename() const { return m_filename.get(); }
    /// Never null: channel 0 if the source names none.
    [[nodiscard]] SlcChannelNode* GetChannel() const { return m_channel.get(); }
    [[nodiscard]] SlcTextureArgsNode* GetArguments() const { return m_arguments.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcTextureTypeNode> m_kind;
    std::unique_ptr<SlcTextureFilenameNode> m_filename;
    std::unique_ptr<SlcChannelNode> m_channel;
    std::unique_ptr<SlcTextureArgsNode> m_arguments;
};
