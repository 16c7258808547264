// The cuts concern what the semantic passes have left on the tree.

#include "frontend/SlcDeleteTree.h"

#include "frontend/SlcNodes.h"
#include "semantics/SlcFuncInfo.h"
#include "semantics/SlcStatementInfo.h"
#include "symbols/SlcFuncSymbolEntry.h"

void SlcDeleteTree::operator()(SlcSyntaxNode* root)
{
    if (root)
        root->ApplyWalker(this);
}

void SlcDeleteTree::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}

void SlcDeleteTree::Case(SlcShaderDefNode* node)
{
    node->WalkIn(this);
    if (const auto info = CheckCast<SlcStatementInfo>(node->GetAnnotation()))
        info->ClearTable();
}

void SlcDeleteTree::Case(SlcFuncDefNode* node)
{
    node->WalkIn(this);
    // A function's scope leads to the scope of its definition, which holds its entry.
    const auto entry = node->GetSymbolEntry();
    if (entry && entry->GetFuncInfo())
        CheckCast<SlcFuncInfo>(entry->GetFuncInfo())->ClearScope();
    node->SetSymbolEntry(nullptr);
}

void SlcDeleteTree::Case(SlcProcCallExprNode* node)
{
    node->SetSymbolEntry(nullptr);
}
