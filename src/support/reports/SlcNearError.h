#pragma once

#include <string>

#include "frontend/SlcCodeWalker.h"

/// Finds a short excerpt of an expression for a report, such as for its part "(near '...')": a
/// constant, a name, the name of a called function, or, for an arithmetic operator with two
/// operands, the excerpt of the left one.
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
