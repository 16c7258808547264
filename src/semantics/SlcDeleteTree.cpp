// Breaks reference cycles: scopes hold entries, the entry of a function holds the facts about its
// body, the facts hold the scope of its formals, and that holds the scope around it. Nodes hold
// entries and scopes. The owner of the tree deletes it afterwards.

#include "semantics/SlcDeleteTree.h"

#include "frontend/SlcNodes.h"
#include "semantics/SlcFuncInfo.h"
#include "semantics/SlcStatementInfo.h"
#include "symbols/SlcFuncSymbolEntry.h"

void SlcDeleteTree::operator()(SlcSyntaxNode* node)
{
    if (node)
        node->ApplyWalker(this);
}

void SlcDeleteTree::Case(SlcShaderDefNode* shader)
{
    shader->WalkIn(this);
    if (const auto info = CheckCast<SlcStatementInfo>(shader->GetAnnotation()); !info.Null())
        info->ClearTable();
}

void SlcDeleteTree::Case(SlcFuncDefNode* function)
{
    function->WalkIn(this);
    const SlcPtr<SlcFuncSymbolEntry> entry = function->GetSymbolEntry();
    if (entry.Null())
        return;
    if (const auto info = CheckCast<SlcFuncInfo>(entry->GetFuncInfo()); !info.Null())
        info->ClearScope();
    function->SetSymbolEntry(nullptr);
}

void SlcDeleteTree::Case(SlcProcCallExprNode* call)
{
    call->SetSymbolEntry(nullptr);
}

void SlcDeleteTree::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}
