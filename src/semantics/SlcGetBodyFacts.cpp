// Collects the facts about a checked body, including those of the functions that it calls. The
// called functions have been checked already, since a function can be called only after its
// definition. The number of operations is that of the expanded body. It doubles with each level of
// functions that call another one twice, so the sum is limited in order not to overflow.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp.

#include "semantics/SlcGetBodyFacts.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "frontend/SlcNodes.h"
#include "semantics/SlcFuncInfo.h"
#include "semantics/SlcLeftSpine.h"
#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcShaderSymbolTable.h"

namespace {

/// True if `variable` is the predefined `L`, `Cl` or `Ol`, or an `extern` alias of one of them.
bool IsOfLightLoop(const SlcVarSymbolEntry& variable)
{
    if (const auto& outer = variable.GetOuter())
        return IsOfLightLoop(*outer);
    const auto isVariable = [&](const char* name) {
        const auto& light = SlcShaderSymbolTable::EntryNamed(name);
        return light && &*light == &variable;
    };
    return isVariable("L") || isVariable("Cl") || isVariable("Ol");
}

}  // namespace

SlcBodyFacts SlcGetBodyFacts::operator()(SlcFuncDefNode* function, SlcShaderTypeNode* shaderType)
{
    m_facts = {};
    m_own.clear();
    m_isLightShader = shaderType->IsLight();
    m_inLightLoop = false;
    function->WalkIn(this);
    return m_facts;
}

void SlcGetBodyFacts::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}

void SlcGetBodyFacts::Case(SlcFuncDefStmtNode*)
{
    // The facts of a nested function are added where it is called.
}

void SlcGetBodyFacts::Case(SlcDefExprNode* node)
{
    node->WalkIn(this);
    // A variable declared `extern` belongs to an enclosing body.
    const auto& entry = node->GetSymbolEntry();
    if (entry && !entry->GetStorage()->IsExtern())
        m_own.insert(&*entry);
}

void SlcGetBodyFacts::Case(SlcIlluminanceStmtNode* node)
{
    node->WalkHead(this);
    const bool outer = std::exchange(m_inLightLoop, true);
    node->GetBody()->ApplyWalker(this);
    m_inLightLoop = outer;
}

void SlcGetBodyFacts::Case(SlcBinOpExprNode* node)
{
    const SlcLeftSpine chain(node);
    chain.first->ApplyWalker(this);
    for (SlcBinOpExprNode* operation : chain.operations)
        operation->GetRight()->ApplyWalker(this);
    AddOperations(chain.operations.size());
}

void SlcGetBodyFacts::Case(SlcAssignExprNode* node)
{
    node->WalkIn(this);
    AddOperations(1);
}

void SlcGetBodyFacts::Case(SlcIdentExprNode* node)
{
    RecordAccess(node->GetSymbolEntry());
}

void SlcGetBodyFacts::Case(SlcArrayRefExprNode* node)
{
    node->WalkIn(this);
    RecordAccess(node->GetSymbolEntry());
}

void SlcGetBodyFacts::Case(SlcLValueNode* node)
{
    node->WalkIn(this);
    RecordAccess(node->GetSymbolEntry());
}

void SlcGetBodyFacts::AddOperations(std::size_t count)
{
    constexpr std::size_t k_most = std::numeric_limits<std::size_t>::max() / 2;
    m_facts.expandedOperations =
        std::min(m_facts.expandedOperations + std::min(count, k_most), k_most);
}

void SlcGetBodyFacts::RecordAccess(const SlcPtr<SlcVarSymbolEntry>& variable)
{
    if (variable.Null())
        return;
    if (variable->GetDetail()->IsUnknownDetail() && m_own.count(&*variable) == 0)
        m_facts.accessesOuterVariables = true;
    if (!m_isLightShader && !m_inLightLoop && IsOfLightLoop(*variable))
        m_facts.needsLightLoop = true;
}

void SlcGetBodyFacts::Case(SlcProcCallExprNode* node)
{
    node->WalkIn(this);
    AddOperations(1);
    const auto& entry = node->GetSymbolEntry();
    if (entry.Null() || entry->GetOrigin() != SlcFuncOrigin::User)
        return;
    const SlcBodyFacts& called = CheckCast<SlcFuncInfo>(entry->GetFuncInfo())->GetBodyFacts();
    if (called.accessesOuterVariables)
        m_facts.accessesOuterVariables = true;
    AddOperations(called.expandedOperations);
    if (called.needsLightLoop && !m_inLightLoop)
        m_facts.needsLightLoop = true;
}
