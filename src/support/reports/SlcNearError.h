#pragma once

#include <string>

#include "frontend/SlcCodeWalker.h"

/// Returns a short excerpt of an expression for the "(near '...')" part of a report: its constant,
/// name or called function, or the excerpt of an operator's left operand.
class SlcNearError : public SlcCodeWalker {
public:
    /// Returns the excerpt; empty for a null node, "<somewhere>" for any other kind of node.
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
