// Each variable has one state (never, maybe or always set; never, maybe or always read before
// that), valid at the current point of the walk. A branch records its changes, so that
//
//     float x;                 x: never set
//     if (s > 0.5)
//         x = 1;               the branch changes x to always; set aside: never
//     else
//         y = 1;               the other branch sees x as never
//                              promoted: always joined with never is maybe
//     Ci = x;                  'x' may not be initialized
//
// If one of two branches ends in a jump, a variable that the other branch sets counts as set after
// both. The body of a loop may not run at all, unless it has no jump and the head of a `for` proves
// that it runs (SlcRunsAtLeastOnce).
//
// A function's accesses to outer variables are checked where it is called, by replaying its record:
// first the variables that it may read, then those that it always reads. Each group is in the order
// of names, since the order of a map keyed by address is arbitrary.
//
// Tested by tests/semantics/SlcCheckUsageTest.cpp.

#include "semantics/SlcCheckUsage.h"

#include <algorithm>
#include <string>
#include <utility>

#include "frontend/SlcNodes.h"
#include "semantics/SlcFuncInfo.h"
#include "semantics/SlcLeftSpine.h"
#include "semantics/SlcRunsAtLeastOnce.h"
#include "symbols/SlcCallFormals.h"
#include "symbols/SlcFuncSymbolEntry.h"

namespace {

bool IsIteration(const SlcLoopStmtNode* loop)
{
    return dynamic_cast<const SlcForStmtNode*>(loop) || dynamic_cast<const SlcWhileStmtNode*>(loop);
}

/// Returns the entries of the function's formals, in order; null for a formal without an entry.
std::vector<SlcVarSymbolEntry*> FormalEntries(const SlcFuncInfo& info)
{
    std::vector<SlcVarSymbolEntry*> entries;
    for (const auto& group : info.GetDefinition()->GetFormals()->GetVarDefs())
        for (const auto& formal : group->GetDefExprs()->GetDefExprs())
            entries.push_back(formal->GetSymbolEntry() ? &*formal->GetSymbolEntry() : nullptr);
    return entries;
}

/// True if the variable needs no check: it has a value from the start, or has been reported.
bool IsAlwaysSet(const SlcVarSymbolEntry& entry)
{
    return entry.IsHidden() || entry.GetStorage()->IsInput() || entry.GetType()->IsErrorType();
}

/// Returns `usage`, the state after one branch, as it counts when joined with `other`: if the
/// branch ends in a jump (`stopped`), a variable that the other branch always sets counts as set.
SlcVariableUsage Outweighed(SlcVariableUsage usage, bool stopped, const SlcVariableUsage& other)
{
    if (stopped && other.GetModified() == SlcUsageState::Always)
        usage.SetModifiedInScope(false);
    return usage;
}

}  // namespace

SlcCheckUsage::SlcCheckUsage(SlcPtr<SlcSemanticError> errors)
    : m_errors(std::move(errors)),
      m_body(std::make_shared<Body>()),
      m_level(0)
{
}

SlcCheckUsage::SlcCheckUsage(SlcCheckUsage& parent)
    : m_errors(parent.m_errors),
      m_body(parent.m_body),
      m_level(parent.m_level + 1),
      m_stopped(parent.m_stopped)
{
}

void SlcCheckUsage::operator()(SlcSyntaxNode* node)
{
    if (!m_stopped)
        node->ApplyWalker(this);
}

void SlcCheckUsage::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}

void SlcCheckUsage::Case(SlcDefExprNode* node)
{
    if (SlcExprNode* initializer = node->GetInitializer())
        initializer->ApplyWalker(this);
    const auto& entry = node->GetSymbolEntry();
    if (entry.Null() || entry->GetStorage()->IsExtern() || IsAlwaysSet(*entry))
        return;
    m_body->variables.try_emplace(&*entry, &*entry, m_level);
    if (node->GetInitializer())
        VarIsModifiedInTable(Find(entry), false);
}

void SlcCheckUsage::Case(SlcLValueNode* node)
{
    node->WalkIn(this);
    VarIsModifiedInTable(Find(node->GetSymbolEntry()), false);
}

void SlcCheckUsage::Case(SlcIdentExprNode* node)
{
    VarIsAccessedInTable(Find(node->GetSymbolEntry()), false, node);
}

void SlcCheckUsage::Case(SlcArrayRefExprNode* node)
{
    node->WalkIn(this);
    VarIsAccessedInTable(Find(node->GetSymbolEntry()), false, node);
}

/// Treats all operators alike: `a += 1` does not count as a read, so that sums may start unset.
void SlcCheckUsage::Case(SlcAssignExprNode* node)
{
    node->GetValue()->ApplyWalker(this);
    node->GetLValue()->ApplyWalker(this);
}

void SlcCheckUsage::Case(SlcBinOpExprNode* node)
{
    const SlcLeftSpine chain(node);
    chain.first->ApplyWalker(this);
    for (auto link = chain.operations.rbegin(); link != chain.operations.rend(); ++link)
        (*link)->GetRight()->ApplyWalker(this);
}

void SlcCheckUsage::Case(SlcCondExprNode* node)
{
    node->GetCondition()->ApplyWalker(this);
    SlcCheckUsage thenBranch(*this);
    thenBranch(node->GetThen());
    thenBranch.SetAside();
    SlcCheckUsage elseBranch(*this);
    elseBranch(node->GetElse());
    elseBranch.SetAside();
    PromoteUsage(thenBranch, elseBranch);
}

void SlcCheckUsage::Case(SlcLoopModStmtNode* node)
{
    m_breakLevel = std::max(m_breakLevel, node->GetLevel()->GetValue());
    m_stopped = true;
}

void SlcCheckUsage::Case(SlcProcCallExprNode* node)
{
    const auto& entry = node->GetSymbolEntry();
    if (entry.Null()) {
        node->WalkIn(this);
        return;
    }
    const auto& arguments = node->GetArguments()->GetArgs();
    const std::vector<SlcCallFormal> formals = SlcFormalsOf(*node);
    for (std::size_t i = 0; i < formals.size(); ++i) {
        if (formals[i].isOutput)
            WalkPlace(*arguments[i]);
        else
            arguments[i]->ApplyWalker(this);
    }
    const auto info = CheckCast<SlcFuncInfo>(entry->GetFuncInfo());
    const auto entries = info ? FormalEntries(*info) : std::vector<SlcVarSymbolEntry*>();
    for (std::size_t i = 0; i < formals.size(); ++i) {
        SlcExprNode* argument = arguments[i].get();
        if (!formals[i].isOutput || !argument->IsReferenceExpr())
            continue;
        Variable* variable = Find(static_cast<SlcReferenceExprNode*>(argument)->GetSymbolEntry());
        if (!info)
            VarIsModifiedInTable(variable, false);
        else if (entries[i])
            PassOutput(*entries[i], variable, node);
    }
    if (info && info->GetUsage())
        Replay(*info->GetUsage(), node);
}

void SlcCheckUsage::WalkPlace(SlcExprNode& argument)
{
    if (dynamic_cast<SlcIdentExprNode*>(&argument))
        return;
    if (auto* element = dynamic_cast<SlcArrayRefExprNode*>(&argument))
        element->GetIndex()->ApplyWalker(this);
    else
        argument.ApplyWalker(this);
}

void SlcCheckUsage::PassOutput(SlcVarSymbolEntry& formal, Variable* argument,
                               const SlcExprNode* call)
{
    if (!argument)
        return;
    const SlcUsageState read = formal.Usage().GetRead();
    const SlcUsageState modified = UsageOf(*argument).GetModified();
    if (read != SlcUsageState::Never && modified != SlcUsageState::Always) {
        const bool isSure = read == SlcUsageState::Always && modified == SlcUsageState::Never;
        NoteChange(*argument);
        UsageOf(*argument).SetAccessedInScope(read == SlcUsageState::Maybe);
        if (IsCheckedHere(*argument))
            m_errors->Warning(call,
                              "Variable '" + argument->entry->GetName() +
                                  (isSure ? "' is used without being initialized"
                                          : "' may be used without being initialized"),
                              1);
    }
    const SlcUsageState set = formal.Usage().GetModified();
    if (set != SlcUsageState::Never)
        VarIsModifiedInTable(argument, set == SlcUsageState::Maybe);
}

void SlcCheckUsage::Replay(SlcCheckUsage& function, SlcExprNode* call)
{
    const auto& variables = function.m_body->outer;
    for (const SlcUsageState grade : {SlcUsageState::Maybe, SlcUsageState::Always})
        for (const auto& [name, variable] : variables)
            if (variable->outer.GetRead() == grade)
                VarIsAccessedInTable(Find(variable->entry), grade == SlcUsageState::Maybe, call);
    for (const auto& [name, variable] : variables)
        if (const SlcUsageState set = variable->outer.GetModified(); set != SlcUsageState::Never)
            VarIsModifiedInTable(Find(variable->entry), set == SlcUsageState::Maybe);
}

SlcCheckUsage::Variable* SlcCheckUsage::Find(const SlcPtr<SlcVarSymbolEntry>& named)
{
    const SlcPtr<SlcVarSymbolEntry>* entry = &named;
    while (*entry && (*entry)->GetStorage()->IsExtern())
        entry = &(*entry)->GetOuter();
    return *entry ? Find(&**entry) : nullptr;
}

SlcCheckUsage::Variable* SlcCheckUsage::Find(SlcVarSymbolEntry* entry)
{
    if (IsAlwaysSet(*entry))
        return nullptr;
    const auto [found, isNew] = m_body->variables.try_emplace(entry, entry, k_outside);
    if (isNew)
        m_body->outer.emplace(entry->GetName(), &found->second);
    return &found->second;
}

SlcVariableUsage& SlcCheckUsage::UsageOf(Variable& variable)
{
    return variable.level == k_outside ? variable.outer : variable.entry->Usage();
}

bool SlcCheckUsage::IsCheckedHere(const Variable& variable)
{
    return variable.level != k_outside && !variable.entry->GetStorage()->IsOutput();
}

void SlcCheckUsage::NoteChange(Variable& variable)
{
    // Changes of local variables of the branch are not recorded, and of other variables only the
    // first change.
    if (variable.level >= m_level || variable.changedAt >= m_level)
        return;
    m_changes.push_back({&variable, UsageOf(variable), variable.changedAt});
    variable.changedAt = m_level;
}

void SlcCheckUsage::SetUsage(Variable& variable, const SlcVariableUsage& usage)
{
    NoteChange(variable);
    UsageOf(variable) = usage;
}

void SlcCheckUsage::VarIsModifiedInTable(Variable* variable, bool maybe)
{
    if (!variable || UsageOf(*variable).GetModified() == SlcUsageState::Always)
        return;
    NoteChange(*variable);
    UsageOf(*variable).SetModifiedInScope(maybe);
}

void SlcCheckUsage::VarIsAccessedInTable(Variable* variable, bool maybe, SlcExprNode* expr)
{
    if (!variable || UsageOf(*variable).GetModified() == SlcUsageState::Always)
        return;
    maybe = maybe || UsageOf(*variable).GetModified() == SlcUsageState::Maybe;
    NoteChange(*variable);
    UsageOf(*variable).SetAccessedInScope(maybe);
    if (IsCheckedHere(*variable))
        LogAccessError(expr, *variable, maybe);
}

void SlcCheckUsage::LogAccessError(const SlcExprNode* expr, const Variable& variable, bool maybe)
{
    m_errors->Warning(expr,
                      "Variable '" + variable.entry->GetName() +
                          (maybe ? "' may not be initialized" : "' is not initialized"),
                      2);
}

void SlcCheckUsage::SetAside()
{
    for (Change& change : m_changes) {
        std::swap(UsageOf(*change.variable), change.usage);
        change.variable->changedAt = change.changedAt;
    }
}

void SlcCheckUsage::Promote(SlcIfThenElseStmtNode*, SlcCheckUsage& thenBranch,
                            SlcCheckUsage& elseBranch)
{
    PromoteUsage(thenBranch, elseBranch);
}

void SlcCheckUsage::Promote(SlcIfThenStmtNode*, SlcCheckUsage& branch)
{
    PromoteUsage(branch, true);
}

void SlcCheckUsage::Promote(SlcLoopStmtNode* node, SlcCheckUsage& body)
{
    const auto* loop = dynamic_cast<const SlcForStmtNode*>(node);
    const bool isSure = loop && body.m_breakLevel == 0 && SlcRunsAtLeastOnce(loop);
    if (IsIteration(node) && body.m_breakLevel > 0)
        --body.m_breakLevel;
    PromoteUsage(body, !isSure);
}

void SlcCheckUsage::PromoteUsage(SlcCheckUsage& branch, bool maybe)
{
    m_breakLevel = std::max(m_breakLevel, branch.m_breakLevel);
    for (const Change& change : branch.m_changes)
        SetUsage(*change.variable,
                 maybe ? UsageOf(*change.variable).Meet(change.usage) : change.usage);
}

void SlcCheckUsage::PromoteUsage(SlcCheckUsage& first, SlcCheckUsage& second)
{
    m_breakLevel = std::max({m_breakLevel, first.m_breakLevel, second.m_breakLevel});
    const auto meet = [&](Variable& variable, const SlcVariableUsage& a,
                          const SlcVariableUsage& b) {
        SetUsage(variable,
                 Outweighed(a, first.m_stopped, b).Meet(Outweighed(b, second.m_stopped, a)));
    };
    for (const Change& change : first.m_changes)
        change.variable->elsewhere = &change.usage;
    for (const Change& change : second.m_changes) {
        const auto* elsewhere = std::exchange(change.variable->elsewhere, nullptr);
        meet(*change.variable, elsewhere ? *elsewhere : UsageOf(*change.variable), change.usage);
    }
    for (const Change& change : first.m_changes)
        if (std::exchange(change.variable->elsewhere, nullptr))
            meet(*change.variable, change.usage, UsageOf(*change.variable));
}
