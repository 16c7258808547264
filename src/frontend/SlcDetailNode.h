#pragma once

#include <string>

#include "frontend/SlcSyntaxNode.h"

/// Base of details: whether a value is one for the whole grid, one for each shading point, or
/// not decided yet. Shared singletons, compared with the tests.
class SlcDetailNode : public SlcSyntaxNode {
public:
    /// Open until a call decides.
    [[nodiscard]] virtual bool IsUnknownDetail() const { return false; }
    /// One of these is true of a detail; a temp-uniform one is also uniform.
    [[nodiscard]] virtual bool IsVarying() const { return false; }
    [[nodiscard]] virtual bool IsUniform() const { return false; }
    /// A temporary that no value outlives a shading point in: one place of storage serves them all.
    [[nodiscard]] virtual bool IsTempUniform() const { return false; }
    [[nodiscard]] virtual std::string ToString() const = 0;

    /// The nodes of the four, which live as long as the process.
    [[nodiscard]] static SlcDetailNode* AUnknown();
    [[nodiscard]] static SlcDetailNode* AUniform();
    [[nodiscard]] static SlcDetailNode* AVarying();
    [[nodiscard]] static SlcDetailNode* ATempUniform();

    /// Varying beats unknown, and unknown beats uniform.
    [[nodiscard]] static SlcDetailNode* Combine(const SlcDetailNode* first,
                                                const SlcDetailNode* second);
};

/// The detail of a formal or local of a function that is declared without one; calls decide it.
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

/// Made by the optimizer alone. Walkers see it as a `SlcUniformNode`.
class SlcTempUniformNode : public SlcUniformNode {
public:
    [[nodiscard]] bool IsTempUniform() const override { return true; }
};
