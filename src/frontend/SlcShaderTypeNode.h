#pragma once

#include <string>

#include "frontend/SlcSyntaxNode.h"

/// Base of the five kinds of shader. The kind determines the predefined variables and which of them
/// may be written, and which light statements and built-ins are allowed.
class SlcShaderTypeNode : public SlcSyntaxNode {
public:
    [[nodiscard]] virtual bool IsLight() const { return false; }
    [[nodiscard]] virtual bool IsSurface() const { return false; }
    [[nodiscard]] virtual bool IsVolume() const { return false; }
    [[nodiscard]] virtual bool IsDisplacement() const { return false; }
    [[nodiscard]] virtual bool IsImager() const { return false; }
    /// True if its points are lit: it may loop over lights (`illuminance`), and call functions of
    /// the source that do.
    [[nodiscard]] bool SeesLights() const { return IsSurface() || IsVolume(); }
    /// Returns the keyword for this kind of shader.
    [[nodiscard]] virtual std::string ToString() const = 0;
};

/// `light`: computes the light that reaches the points `Ps`.
class SlcLightShaderTypeNode : public SlcVisitable<SlcLightShaderTypeNode, SlcShaderTypeNode> {
public:
    [[nodiscard]] bool IsLight() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return "light"; }
};

/// `surface`: sets color and opacity of points on a surface, and may loop over lights.
class SlcSurfaceShaderTypeNode : public SlcVisitable<SlcSurfaceShaderTypeNode, SlcShaderTypeNode> {
public:
    [[nodiscard]] bool IsSurface() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return "surface"; }
};

/// `volume`: changes color and opacity of light that passes through a volume, and may loop over
/// lights.
class SlcVolumeShaderTypeNode : public SlcVisitable<SlcVolumeShaderTypeNode, SlcShaderTypeNode> {
public:
    [[nodiscard]] bool IsVolume() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return "volume"; }
};

/// `displacement`: moves points and their normals.
class SlcDisplacementShaderTypeNode
    : public SlcVisitable<SlcDisplacementShaderTypeNode, SlcShaderTypeNode> {
public:
    [[nodiscard]] bool IsDisplacement() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return "displacement"; }
};

/// `imager`: processes the pixels of a finished picture.
class SlcImagerShaderTypeNode : public SlcVisitable<SlcImagerShaderTypeNode, SlcShaderTypeNode> {
public:
    [[nodiscard]] bool IsImager() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return "imager"; }
};
