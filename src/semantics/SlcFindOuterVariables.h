#pragma once

#include <set>

#include "frontend/SlcCodeWalker.h"
#include "support/SlcPtr.h"

class SlcVarSymbolEntry;

/// Finds out whether a function, or one that it calls, touches a variable of unknown detail that
/// is neither a formal nor a local of it. What such a function evaluates to depends on more than
/// its arguments. Linear in the function's body.
class SlcFindOuterVariables : public SlcCodeWalker {
public:
    /// The body has been checked.
    [[nodiscard]] bool operator()(SlcFuncDefNode* function);

private:
    using SlcCodeWalker::Case;
    void Case(SlcFuncDefStmtNode* node) override;
    void Case(SlcDefExprNode* node) override;
    void Case(SlcBinOpExprNode* node) override;
    void Case(SlcIdentExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcLValueNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Default(SlcSyntaxNode* node) override;

    void Touch(const SlcPtr<SlcVarSymbolEntry>& variable);

    std::set<const SlcVarSymbolEntry*> m_own;
    bool m_found = false;
};
