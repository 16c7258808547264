#pragma once

#include "frontend/SlcCodeWalker.h"

/// Cuts the links between a checked tree and its symbol tables, after which deleting the root
/// frees both: a table holds the entries of its functions, the entry of a function its info, and
/// the info the function's own table, from which the first can be reached again.
///
/// It needs nothing but the tree, which no pass can read afterwards. It takes a tree as any
/// failed pass leaves it.
class SlcDeleteTree : public SlcCodeWalker {
public:
    /// Nothing happens for a null node.
    void operator()(SlcSyntaxNode* node);

private:
    using SlcCodeWalker::Case;
    void Case(SlcShaderDefNode* shader) override;
    void Case(SlcFuncDefNode* function) override;
    void Case(SlcProcCallExprNode* call) override;
    void Default(SlcSyntaxNode* node) override;
};
