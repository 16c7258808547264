#pragma once

#include <memory>
#include <string_view>

#include "frontend/SlcExprNodes.h"

/// Base of the binary arithmetic operators.
class SlcBinOpExprNode : public SlcVisitable<SlcBinOpExprNode, SlcExprNode> {
public:
    /// Stands where its left operand stands.
    SlcBinOpExprNode(std::unique_ptr<SlcExprNode> left, std::unique_ptr<SlcExprNode> right);
    [[nodiscard]] bool IsConstExpr() const override;
    [[nodiscard]] virtual bool IsAdd() const { return false; }
    [[nodiscard]] virtual bool IsSub() const { return false; }
    [[nodiscard]] virtual bool IsMult() const { return false; }
    [[nodiscard]] virtual bool IsDiv() const { return false; }
    [[nodiscard]] virtual bool IsDotProd() const { return false; }
    [[nodiscard]] virtual bool IsCrossProd() const { return false; }
    [[nodiscard]] virtual std::string_view ToString() const = 0;
    [[nodiscard]] SlcExprNode* GetLeft() const { return m_left.get(); }
    [[nodiscard]] SlcExprNode* GetRight() const { return m_right.get(); }
    void WalkIn(SlcCodeWalker* walker) override;
    [[nodiscard]] SlcBinOpExprNode* AsBinOpExpr() final { return this; }

private:
    std::unique_ptr<SlcExprNode> m_left;
    std::unique_ptr<SlcExprNode> m_right;
};

/// `a . b`, which binds tighter than the other operators.
class SlcDotProdExprNode : public SlcVisitable<SlcDotProdExprNode, SlcBinOpExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsDotProd() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "."; }
};

/// `a * b`; of triples component by component.
class SlcMultExprNode : public SlcVisitable<SlcMultExprNode, SlcBinOpExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsMult() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "*"; }
};

/// `a / b`; of triples component by component.
class SlcDivExprNode : public SlcVisitable<SlcDivExprNode, SlcBinOpExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsDiv() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "/"; }
};

/// `a ^ b`, which binds looser than `*` and tighter than `+`.
class SlcCrossProdExprNode : public SlcVisitable<SlcCrossProdExprNode, SlcBinOpExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsCrossProd() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "^"; }
};

/// `a + b`
class SlcAddExprNode : public SlcVisitable<SlcAddExprNode, SlcBinOpExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsAdd() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "+"; }
};

/// `a - b`
class SlcSubExprNode : public SlcVisitable<SlcSubExprNode, SlcBinOpExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsSub() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "-"; }
};
