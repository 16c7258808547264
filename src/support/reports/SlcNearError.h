#pragma once

#include <string>

#include "frontend/SlcCodeWalker.h"

/// Renders a short excerpt of an expression for the "(near '...')" part of a report: its
/// constant, name or called function, or the left operand of an operator.
class SlcNearError : public SlcCodeWalker {
public:
    /// Empty for a null node; "<somewhere>" for a node without a short text.
    [[nodiscard]] std::string operator()(SlcSyntaxNode* node);

private:
    using SlcCodeWalker::Case;
    void Case(SlcFloatConstNode* constant) override;
    void Case(SlcStringLiteralNode* literal) override;
    void Case(SlcIdentNode* ident) override;
    void Case(SlcConstExprNode* expr) override;
    void Case(SlcIdentExprNode* expr) override;
    void Case(SlcProcCallExprNode* call) override;
    void Case(SlcBinOpExprNode* expr) override;
    void Default(SlcSyntaxNode* node) override;

    std::string m_text;
};
