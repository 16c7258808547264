// Checks statements other than those for lights. All passes run over the expressions of a statement
// before the next statement is checked. Branches and the bodies of loops are walked with separate
// usage records, which are set aside after the walk and merged where the statement ends
// (SlcCheckUsage).
//
// A `return` requests the type of its function, an assignment that of its target, and a declaration
// that of its variable; a condition has no type. The first and the last expression in the head of a
// `for` must have exactly one type. Several types of a call statement are an error too, or only a
// warning if one of them is void and `--strict` is not given.
//
// Tested by tests/semantics/SlcCheckSemanticsTest.cpp.

#include <algorithm>
#include <string>
#include <utility>

#include "frontend/SlcNodes.h"
#include "semantics/SlcCheckSemantics.h"
#include "semantics/SlcFuncInfo.h"
#include "semantics/SlcStatementInfo.h"
#include "semantics/SlcTypedExpr.h"
#include "support/SlcCompilation.h"
#include "support/SlcDiagnostics.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

struct ReturnType {
    SlcIdentNode* ident = SlcLexicalNode::CreateIdent("**returnType**");
};

}  // namespace

SlcIdentNode* SlcCheckSemantics::ReturnTypeIdent()
{
    return SlcPartOfCompilation<ReturnType>().ident;
}

void SlcCheckSemantics::FindTypes(SlcSyntaxNode* node)
{
    m_errorsBefore = NbErrors();
    m_typesPass(node, m_scopes, m_shaderType);
}

void SlcCheckSemantics::FinishChecks(SlcSyntaxNode* node)
{
    m_uniquePass(node, m_scopes.current, m_shaderType);
    {
        const SlcSemanticError::QuietAfterError quiet(*m_errors, m_errorsBefore);
        m_detailPass(node, {m_shaderType, !m_inFunction, m_lightNesting != 0});
    }
    CheckUsage(node);
}

void SlcCheckSemantics::CheckExprType(SlcExprNode* expr)
{
    FindTypes(expr);
    SlcPossibleTypes::Of(expr)->SetUniqueType(WantedTypeOf(expr));
    FinishChecks(expr);
}

SlcTypeNode* SlcCheckSemantics::WantedTypeOf(SlcExprNode* expr)
{
    const auto& types = SlcPossibleTypes::Of(expr)->GetTypes();
    // The next pass reports the operator that has no type.
    if (types.empty())
        return SlcTypeNode::AVoid();
    // Report several types, but use the first one, since the next passes need a type.
    if (types.size() > 1)
        m_errors->Error(expr, "Ambiguous type for expression");
    return types.front();
}

void SlcCheckSemantics::CheckCondition(SlcRelationNode* condition)
{
    FindTypes(condition);
    FinishChecks(condition);
}

void SlcCheckSemantics::CheckUsage(SlcSyntaxNode* node)
{
    if (m_usage)
        (*m_usage)(node);
}

void SlcCheckSemantics::Case(SlcStmtNode* node)
{
    m_errors->FatalError(node, "Statement not yet checked");
}

void SlcCheckSemantics::Case(SlcStmtsNode* node)
{
    const SlcPtr<SlcSymbolTable> outer = m_scopes.current;
    m_scopes.current = outer->CreateNewScopeTable();
    node->SetAnnotation(MakeShared<SlcStatementInfo>(m_scopes.current));
    node->WalkIn(this);
    m_scopes.current = outer;
}

void SlcCheckSemantics::Case(SlcVarDefsStmtNode* node)
{
    m_scopes.current = m_declarations.AddLocalVars(node, m_scopes.current, OuterScopes(),
                                                   m_shaderType, {m_inFunction, m_lightNesting});
    node->SetAnnotation(MakeShared<SlcStatementInfo>(m_scopes.current));
    CheckUsage(node);
}

void SlcCheckSemantics::Case(SlcAssignStmtNode* node)
{
    SlcAssignExprNode* assignment = node->GetAssignment();
    FindTypes(assignment);
    const auto annotation = SlcPossibleTypes::Of(assignment);
    const auto& types = annotation->GetTypes();
    annotation->SetUniqueType(types.size() == 1 ? types.front() : SlcTypeNode::AVoid());
    FinishChecks(assignment);
}

void SlcCheckSemantics::Case(SlcProcCallStmtNode* node)
{
    SlcProcCallExprNode* call = node->GetCall();
    FindTypes(call);
    SlcPossibleTypes::Of(call)->SetUniqueType(WantedTypeOfCall(call));
    FinishChecks(call);
    const auto& entry = call->GetSymbolEntry();
    if (entry && entry->GetFuncInfo() &&
        CheckCast<SlcFuncInfo>(entry->GetFuncInfo())->HasIlluminate())
        CountLight(node);
}

SlcTypeNode* SlcCheckSemantics::WantedTypeOfCall(SlcProcCallExprNode* call)
{
    const auto annotation = SlcPossibleTypes::Of(call);
    const auto& types = annotation->GetTypes();
    const std::string& name = call->GetIdent()->GetName();
    if (types.empty())
        m_errors->FatalError(call, "No type associated to function call");
    if (types.size() == 1)
        return types.front();
    // The value is not used, so the overload without a value is the better guess.
    if (!m_options.m_strict && annotation->IsInTypes(SlcTypeNode::AVoid(), false))
        m_errors->Warning(call,
                          "Ambiguous function return type. Picking function version with the "
                          "void return type",
                          name, 1);
    else
        m_errors->Error(call, "Cannot determine which version of function to call", name);
    return SlcTypeNode::AVoid();
}

void SlcCheckSemantics::Case(SlcReturnStmtNode* node)
{
    FindTypes(node->GetValue());
    SlcPossibleTypes::Of(node->GetValue())->SetUniqueType(WantedTypeOfReturn(node));
    m_hasReturn = true;
    FinishChecks(node->GetValue());
}

SlcTypeNode* SlcCheckSemantics::WantedTypeOfReturn(SlcReturnStmtNode* node)
{
    if (!m_inFunction) {
        m_errors->Error(node, "Cannot return a value from a shader");
        return SlcTypeNode::AVoid();
    }
    SlcTypeNode* wanted = m_scopes.current->GetVarEntry(ReturnTypeIdent(), true)->GetType();
    if (m_hasReturn) {
        m_errors->Error(node,
                        "Cannot have more than one 'return' statement inside the same function");
    } else if (wanted->IsVoidType()) {
        m_errors->Error(node, "Cannot return a value from a function with 'void' return type");
    } else {
        // A requested float also matches the types that it would be promoted to, which is wrong
        // here.
        const SlcTypeNode* found = SlcPossibleTypes::Of(node->GetValue())->IsInTypes(wanted, true);
        const bool fits = found && found->IsPromotableAs(wanted);
        if (!fits && !SlcTypedExpr::IsUntyped(node->GetValue()))
            m_errors->Error(node->GetValue(), "Type mismatch for the 'return' expression type");
    }
    return wanted;
}

std::unique_ptr<SlcCheckUsage> SlcCheckSemantics::WalkBranch(SlcSyntaxNode* branch,
                                                             SlcExprNode* step)
{
    auto record = m_usage ? std::make_unique<SlcCheckUsage>(*m_usage) : nullptr;
    SlcCheckUsage* const outer = std::exchange(m_usage, record.get());
    branch->ApplyWalker(this);
    if (step)
        CheckExprType(step);
    m_usage = outer;
    if (record)
        record->SetAside();
    return record;
}

void SlcCheckSemantics::Case(SlcIfThenStmtNode* node)
{
    CheckCondition(node->GetCondition());
    const auto branch = WalkBranch(node->GetThen(), nullptr);
    if (branch)
        m_usage->Promote(node, *branch);
}

void SlcCheckSemantics::Case(SlcIfThenElseStmtNode* node)
{
    CheckCondition(node->GetCondition());
    const int lightsBefore = m_lights;
    const auto thenBranch = WalkBranch(node->GetThen(), nullptr);
    const int lightsOfThen = std::exchange(m_lights, lightsBefore);
    const auto elseBranch = WalkBranch(node->GetElse(), nullptr);
    m_lights = std::max(m_lights, lightsOfThen);
    if (thenBranch && elseBranch)
        m_usage->Promote(node, *thenBranch, *elseBranch);
}

void SlcCheckSemantics::WalkLoopBody(SlcLoopStmtNode* loop, SlcExprNode* step)
{
    const auto branch = WalkBranch(loop->GetBody(), step);
    if (branch)
        m_usage->Promote(loop, *branch);
}

// The start and the condition of a loop always run at least once, so they belong to the enclosing
// record.

void SlcCheckSemantics::Case(SlcForStmtNode* node)
{
    CheckExprType(node->GetInit());
    CheckCondition(node->GetCondition());
    ++m_loopDepth;
    WalkLoopBody(node, node->GetStep());
    --m_loopDepth;
}

void SlcCheckSemantics::Case(SlcWhileStmtNode* node)
{
    CheckCondition(node->GetCondition());
    ++m_loopDepth;
    WalkLoopBody(node, nullptr);
    --m_loopDepth;
}

void SlcCheckSemantics::Case(SlcLoopModStmtNode* node)
{
    const int level = node->GetLevel()->GetValue();
    const std::string keyword = node->ToString();
    if (m_loopDepth == 0)
        m_errors->Error(node, "Can use " + keyword + " only from within a for/while loop");
    else if (level <= 0)
        m_errors->Error(node, "Invalid level for " + keyword);
    else if (level > m_loopDepth)
        m_errors->Error(node, "Cannot " + keyword + " that many levels");
    CheckUsage(node);
}
