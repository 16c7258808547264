#pragma once

#include "frontend/SlcCodeWalker.h"
#include "frontend/SlcNodes.h"

/// Marks each loop, condition and light statement that a `break`, `continue` or `return` inside it
/// leaves, each loop that a `continue` continues, and each logical operator whose right side needs
/// a guard (`SlcLogOpNode::RightNeedsGuard`) or reads an element at an index that is not a
/// constant.
///
/// One walk over the checked tree before its lowering, which emits simpler code where there is no
/// mark. Functions that are never called are skipped.
class SlcMarkLeaves : public SlcCodeWalker {
public:
    /// Sets marks with `SetContainsBreakOrContinue`, `SetRightNeedsGuard` and
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

    // How many levels of a `break` a statement accounts for: one if it is a `for` or `while` loop,
    // otherwise none.
    enum class Leaves { NoLevel, OneLevel };
    /// Marks `node` if a jump inside leaves or continues it, and propagates remaining levels
    /// outward.
    template <class Node>
    void WalkMarking(Node* node, Leaves leaves);

    int m_levelsToLeave = 0;  // remaining enclosing loops that some jump leaves
    // True if the part of the right side walked so far needs a guard, or reads an element at an
    // index that is not a constant:
    bool m_needsGuard = false;
    bool m_readsElement = false;
};
