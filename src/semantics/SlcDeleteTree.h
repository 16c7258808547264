#pragma once

#include "frontend/SlcCodeWalker.h"

/// Breaks the reference cycles between a checked tree and its symbol tables, after which deleting
/// the root frees both: a table holds the entries of its functions, the entry of a function its
/// info, and the info the table of the function's formals, which holds the first table again.
///
/// No pass can read the tree afterwards. The tree may be in any state in which a failed pass leaves
/// it.
class SlcDeleteTree : public SlcCodeWalker {
public:
    /// Breaks the cycles below `node`; does nothing if it is null.
    void operator()(SlcSyntaxNode* node);

private:
    using SlcCodeWalker::Case;
    void Case(SlcShaderDefNode* shader) override;
    void Case(SlcFuncDefNode* function) override;
    void Case(SlcProcCallExprNode* call) override;
    void Default(SlcSyntaxNode* node) override;
};
