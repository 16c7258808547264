#pragma once

#include <string>

#include "frontend/SlcSyntaxNode.h"

/// Base of details. A detail states whether a value exists once for the whole grid or once for each
/// shading point, or that this is not decided yet. There is one shared object per detail; the `Is`
/// operations distinguish them.
class SlcDetailNode : public SlcSyntaxNode {
public:
    /// True if the detail is not decided, for example since it depends on the call of a function.
    [[nodiscard]] virtual bool IsUnknownDetail() const { return false; }
    /// Exactly one of the next two is true for a known detail; a temp-uniform detail is uniform.
    [[nodiscard]] virtual bool IsVarying() const { return false; }
    [[nodiscard]] virtual bool IsUniform() const { return false; }
    /// True for the detail of a local or temporary that is used only within one iteration of a loop
    /// over shading points, so that all points can share its storage.
    [[nodiscard]] virtual bool IsTempUniform() const { return false; }
    [[nodiscard]] virtual std::string ToString() const = 0;

    /// Return the nodes of the four details, which live as long as the process.
    [[nodiscard]] static SlcDetailNode* AUnknown();
    [[nodiscard]] static SlcDetailNode* AUniform();
    [[nodiscard]] static SlcDetailNode* AVarying();
    [[nodiscard]] static SlcDetailNode* ATempUniform();

    /// Returns the detail of a value computed from two values with these details: varying dominates
    /// unknown, and unknown dominates uniform. The result is never temp-uniform.
    [[nodiscard]] static SlcDetailNode* Combine(const SlcDetailNode* first,
                                                const SlcDetailNode* second);
};

/// The detail of a variable whose declaration states none. For a formal or local of a function,
/// each call determines the detail; a local of a shader is treated as varying. A parameter of a
/// built-in that accepts any detail also has this one.
class SlcUnknownDetailNode : public SlcVisitable<SlcUnknownDetailNode, SlcDetailNode> {
public:
    [[nodiscard]] bool IsUnknownDetail() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return "unknown"; }
};

/// `uniform`: one value for the grid.
class SlcUniformNode : public SlcVisitable<SlcUniformNode, SlcDetailNode> {
public:
    [[nodiscard]] bool IsUniform() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return "uniform"; }
};

/// `varying`: one value for each shading point.
class SlcVaryingNode : public SlcVisitable<SlcVaryingNode, SlcDetailNode> {
public:
    [[nodiscard]] bool IsVarying() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return "varying"; }
};

/// The detail of locals and temporaries whose storage all points share (`IsTempUniform`). Only the
/// optimizer sets it, for C++.
/// Walkers treat it as a `SlcUniformNode`.
class SlcTempUniformNode : public SlcUniformNode {
public:
    [[nodiscard]] bool IsTempUniform() const override { return true; }
};
