#pragma once

#include <string>

#include "frontend/SlcSyntaxNode.h"

/// Base of details. A detail states whether a value exists once for the whole grid or once for each
/// shading point, or that this is not decided yet. There is one shared object per detail; the `Is`
/// operations distinguish them.
class SlcDetailNode : public SlcSyntaxNode {
public:
    /// True if the detail depends on the call of a function.
    [[nodiscard]] virtual bool IsUnknownDetail() const { return false; }
    /// Exactly one of the next two is true for a known detail; a temp-uniform detail is uniform.
    [[nodiscard]] virtual bool IsVarying() const { return false; }
    [[nodiscard]] virtual bool IsUniform() const { return false; }
    /// True for a temporary whose value is used only within the iteration of one shading point, so
    /// all points share its storage.
    [[nodiscard]] virtual bool IsTempUniform() const { return false; }
    [[nodiscard]] virtual std::string ToString() const = 0;

    /// Return the nodes of the four details, which live as long as the process.
    [[nodiscard]] static SlcDetailNode* AUnknown();
    [[nodiscard]] static SlcDetailNode* AUniform();
    [[nodiscard]] static SlcDetailNode* AVarying();
    [[nodiscard]] static SlcDetailNode* ATempUniform();

    /// Returns the detail of a value computed from both: varying dominates unknown, and unknown
    /// dominates uniform.
    [[nodiscard]] static SlcDetailNode* Combine(const SlcDetailNode* first,
                                                const SlcDetailNode* second);
};

/// The detail of a function's formal or local whose declaration states none; each call determines
/// the detail.
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

/// The detail of temporaries that all points share (`IsTempUniform`). Only the optimizer sets it.
/// Walkers treat it as a `SlcUniformNode`.
class SlcTempUniformNode : public SlcUniformNode {
public:
    [[nodiscard]] bool IsTempUniform() const override { return true; }
};
