#pragma once

#include <string>

#include "frontend/SlcSyntaxNode.h"

/// Base of details: a value exists once for the whole grid or once for each shading point, or this
/// is not decided yet. Shared singletons, compared with the tests.
class SlcDetailNode : public SlcSyntaxNode {
public:
    /// True if the detail depends on the call of a function.
    [[nodiscard]] virtual bool IsUnknownDetail() const { return false; }
    /// Exactly one of these is true for a known detail; a temp-uniform one is also uniform.
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

/// The detail of a formal or local of a function that is declared without one; each call determines
/// it.
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

/// Assigned only by the optimizer. Walkers treat it as a `SlcUniformNode`.
class SlcTempUniformNode : public SlcUniformNode {
public:
    [[nodiscard]] bool IsTempUniform() const override { return true; }
};
