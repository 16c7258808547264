#pragma once

#include "frontend/SlcCodeWalker.h"

/// Cuts what the tree and the symbol tables hold of each other, so that both go away when the
/// tree is deleted. Comes right before the deletion of the root.
class SlcDeleteTree : public SlcCodeWalker {
public:
    /// `root` may be null.
    void operator()(SlcSyntaxNode* root);

private:
    using SlcCodeWalker::Case;
    void Case(SlcShaderDefNode* node) override;
    void Case(SlcFuncDefNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Default(SlcSyntaxNode* node) override;
};
