#include "semantics/SlcFindOuterVariables.h"

#include "frontend/SlcNodes.h"
#include "semantics/SlcFuncInfo.h"
#include "semantics/SlcLeftSpine.h"
#include "symbols/SlcFuncSymbolEntry.h"

bool SlcFindOuterVariables::operator()(SlcFuncDefNode* function)
{
    m_own.clear();
    m_found = false;
    function->WalkIn(this);
    return m_found;
}

void SlcFindOuterVariables::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}

void SlcFindOuterVariables::Case(SlcFuncDefStmtNode*)
{
    // A nested function counts where it is called.
}

void SlcFindOuterVariables::Case(SlcDefExprNode* node)
{
    node->WalkIn(this);
    if (const auto& entry = node->GetSymbolEntry())
        m_own.insert(&*entry);
}

void SlcFindOuterVariables::Case(SlcBinOpExprNode* node)
{
    const SlcLeftSpine chain(node);
    chain.first->ApplyWalker(this);
    for (SlcBinOpExprNode* operation : chain.operations)
        operation->GetRight()->ApplyWalker(this);
}

void SlcFindOuterVariables::Case(SlcIdentExprNode* node)
{
    Touch(node->GetSymbolEntry());
}

void SlcFindOuterVariables::Case(SlcArrayRefExprNode* node)
{
    node->WalkIn(this);
    Touch(node->GetSymbolEntry());
}

void SlcFindOuterVariables::Case(SlcLValueNode* node)
{
    node->WalkIn(this);
    Touch(node->GetSymbolEntry());
}

void SlcFindOuterVariables::Touch(const SlcPtr<SlcVarSymbolEntry>& variable)
{
    if (variable && variable->GetDetail()->IsUnknownDetail() && m_own.count(&*variable) == 0)
        m_found = true;
}

void SlcFindOuterVariables::Case(SlcProcCallExprNode* node)
{
    node->WalkIn(this);
    const auto& entry = node->GetSymbolEntry();
    if (entry && entry->GetFuncInfo() && entry->GetOrigin() == SlcFuncOrigin::User &&
        CheckCast<SlcFuncInfo>(entry->GetFuncInfo())->TouchesOuterVariables())
        m_found = true;
}
