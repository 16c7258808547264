// A report identifies an expression by the first name or constant in it. Only nodes that usually
// begin with one have a `Case`; the text for all others is "<somewhere>".

#include "support/reports/SlcNearError.h"

#include "frontend/SlcNodes.h"

std::string SlcNearError::operator()(SlcSyntaxNode* node)
{
    m_text.clear();
    if (node)
        node->ApplyWalker(this);
    return m_text;
}

void SlcNearError::Case(SlcFloatConstNode* constant)
{
    m_text = std::to_string(constant->GetValue());
}

void SlcNearError::Case(SlcStringLiteralNode* literal)
{
    m_text = literal->GetText();
}

void SlcNearError::Case(SlcIdentNode* ident)
{
    m_text = ident->GetName();
}

void SlcNearError::Case(SlcConstExprNode* expr)
{
    expr->GetConst()->ApplyWalker(this);
}

void SlcNearError::Case(SlcIdentExprNode* expr)
{
    expr->GetIdent()->ApplyWalker(this);
}

void SlcNearError::Case(SlcProcCallExprNode* call)
{
    call->GetIdent()->ApplyWalker(this);
}

void SlcNearError::Case(SlcBinOpExprNode* expr)
{
    expr->GetLeft()->ApplyWalker(this);
}

void SlcNearError::Default(SlcSyntaxNode*)
{
    m_text = "<somewhere>";
}
