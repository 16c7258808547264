#pragma once

// Arithmetic. Typed by SlcOperatorTypes.h and SlcResolveOperator, lowered in
// SlcGenInterCodeExpressions.cpp; the instructions are in SlcArithICode.h.

#include <memory>
#include <string_view>

#include "frontend/SlcExprNodes.h"

/// Base of the binary arithmetic operators. They are left-associative: `a - b - c` is
/// `(a - b) - c`. A chain may have thousands of operators, so the passes that check expressions
/// walk it in a loop (`SlcLeftSpine`).
class SlcBinOpExprNode : public SlcVisitable<SlcBinOpExprNode, SlcExprNode> {
public:
    /// Takes the position of its left operand.
    SlcBinOpExprNode(std::unique_ptr<SlcExprNode> left, std::unique_ptr<SlcExprNode> right);
    /// True if both operands are constant.
    [[nodiscard]] bool IsConstExpr() const override;
    [[nodiscard]] virtual bool IsAdd() const { return false; }
    [[nodiscard]] virtual bool IsSub() const { return false; }
    [[nodiscard]] virtual bool IsMult() const { return false; }
    [[nodiscard]] virtual bool IsDiv() const { return false; }
    [[nodiscard]] virtual bool IsDotProd() const { return false; }
    [[nodiscard]] virtual bool IsCrossProd() const { return false; }
    /// Returns the operator, as written in the source.
    [[nodiscard]] virtual std::string_view ToString() const = 0;
    [[nodiscard]] SlcExprNode* GetLeft() const { return m_left.get(); }
    [[nodiscard]] SlcExprNode* GetRight() const { return m_right.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] SlcBinOpExprNode* AsBinOpExpr() final { return this; }

private:
    std::unique_ptr<SlcExprNode> m_left;
    std::unique_ptr<SlcExprNode> m_right;
};

/// `a . b`, of two colors or two members of the point family (point, vector, normal): a float. It
/// binds tighter than the other binary operators.
class SlcDotProdExprNode : public SlcVisitable<SlcDotProdExprNode, SlcBinOpExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsDotProd() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "."; }
};

/// `a * b`: component by component for colors and the point family, the matrix product for
/// matrices.
class SlcMultExprNode : public SlcVisitable<SlcMultExprNode, SlcBinOpExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsMult() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "*"; }
};

/// `a / b`: component by component for colors and the point family; for matrices, `a` times the
/// inverse of `b`.
class SlcDivExprNode : public SlcVisitable<SlcDivExprNode, SlcBinOpExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsDiv() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "/"; }
};

/// `a ^ b`, of two members of the point family: a vector, a normal or a point, as the context
/// requires. It binds looser than `*` and tighter than `+`.
class SlcCrossProdExprNode : public SlcVisitable<SlcCrossProdExprNode, SlcBinOpExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsCrossProd() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "^"; }
};

/// `a + b`, of floats, colors and the point family; not for matrices.
class SlcAddExprNode : public SlcVisitable<SlcAddExprNode, SlcBinOpExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsAdd() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "+"; }
};

/// `a - b`, of floats, colors and the point family; not for matrices. For two points, the vector
/// from `b` to `a`.
class SlcSubExprNode : public SlcVisitable<SlcSubExprNode, SlcBinOpExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsSub() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "-"; }
};
