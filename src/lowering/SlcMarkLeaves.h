#pragma once

#include "frontend/SlcNodes.h"

/// Marks each loop, condition and light statement that a `break`, `continue` or `return` inside it
/// leaves, and each logical operator whose right side has effects or reads an element.
///
/// One walk over the checked tree, in front of its lowering, which takes simpler forms where no
/// mark stands. Functions that nothing calls are passed over.
class SlcMarkLeaves : public SlcCodeWalker {
public:
    /// Marks are set by the nodes' `SetContainsBreakOrContinue`, `SetRightNeedsGuard` and
    /// `SetRightReadsElement`.
    void operator()(SlcSyntaxNode* root) { root->ApplyWalker(this); }

private:
    using SlcCodeWalker::Case;
    void Case(SlcFuncDefNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcAssignExprNode* node) override;
    void Case(SlcCondExprNode* node) override;
    void Case(SlcLogOpNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Case(SlcIlluminateStmtNode* node) override;
    void Case(SlcSolarStmtNode* node) override;
    void Case(SlcIlluminanceStmtNode* node) override;
    void Case(SlcIfThenStmtNode* node) override;
    void Case(SlcIfThenElseStmtNode* node) override;
    void Case(SlcForStmtNode* node) override;
    void Case(SlcWhileStmtNode* node) override;
    void Case(SlcLoopModStmtNode* node) override;
    void Case(SlcReturnStmtNode* node) override;
    void Default(SlcSyntaxNode* node) override { node->WalkIn(this); }

    // What stands where: a loop ends one level of a break, another statement ends none.
    enum class Leaves { NoLevel, OneLevel };
    /// Marks `node` if something in it leaves it, and hands what goes further out on.
    template <class Node>
    void WalkMarking(Node* node, Leaves leaves);

    int m_levelsToLeave = 0;  // loops around here that some break or continue reaches
    // What has been walked since the right side began does:
    bool m_needsGuard = false;
    bool m_readsElement = false;
};
