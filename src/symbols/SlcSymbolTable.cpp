// Makes tables, adds entries, and looks up variables: the nearest scope with a variable of the name
// counts. Functions are added and looked up in SlcSymbolTableFunctions.cpp.
//
// Tested by tests/symbols/SlcSymbolTableTest.cpp.

#include "symbols/SlcSymbolTable.h"

#include <utility>

#include "symbols/SlcSymbolScope.h"

SlcSymbolTable::SlcSymbolTable() : SlcSymbolTable(SlcPtr<SlcSymbolTable>()) {}

SlcSymbolTable::SlcSymbolTable(SlcPtr<SlcSymbolTable> parent)
    : SlcSymbolTable(MakeShared<SlcSymbolScope>(std::move(parent)))
{
}

SlcSymbolTable::SlcSymbolTable(SlcPtr<SlcSymbolScope> scope)
    : m_scope(std::move(scope)),
      m_position(m_scope->m_tables++)
{
}

SlcSymbolTable::~SlcSymbolTable() = default;

SlcPtr<SlcSymbolTable> SlcSymbolTable::CreateNewScopeTable()
{
    return MakeShared<SlcSymbolTable>(SlcPtr<SlcSymbolTable>(this));
}

SlcPtr<SlcSymbolTable> SlcSymbolTable::CreateCurrentScopeTable()
{
    // The usual case: this is the last table of the scope.
    if (m_position + 1 == m_scope->m_tables) {
        auto next = MakeShared<SlcSymbolTable>(m_scope);
        next->m_definitionScope = m_definitionScope;
        return next;
    }
    // A later table exists; neither it nor the new table may see the other's declarations.
    auto fork = MakeShared<SlcSymbolTable>(m_scope->m_parent);
    fork->m_scope->m_previous = this;
    return fork;
}

void SlcSymbolTable::AddEntry(SlcPtr<SlcSymbolEntry> entry)
{
    m_scope->Add(m_position, std::move(entry));
}

void SlcSymbolTable::AddVarEntry(const SlcPtr<SlcVarSymbolEntry>& entry)
{
    AddEntry(entry);
}

SlcPtr<SlcVarSymbolEntry> SlcSymbolTable::AddVarEntry(SlcIdentNode* ident, SlcTypeNode* type,
                                                      SlcDetailNode* detail,
                                                      SlcStorageSpecNode* storage, bool hidden,
                                                      const char* cName,
                                                      SlcPtr<SlcVarSymbolEntry> outer)
{
    auto entry =
        MakeShared<SlcVarSymbolEntry>(ident, type, detail, storage, hidden, std::move(outer));
    if (cName)
        entry->MakeIntCodeVar(cName);
    AddEntry(entry);
    return entry;
}

const SlcSymbolTable* SlcSymbolTable::NextScope() const
{
    const auto& next = m_scope->m_previous ? m_scope->m_previous : m_scope->m_parent;
    return next ? &*next : nullptr;
}

SlcPtr<SlcVarSymbolEntry> SlcSymbolTable::FindVariable(SlcIdentNode* ident) const
{
    const auto* named = m_scope->Find(ident->GetName());
    if (!named)
        return nullptr;
    SlcPtr<SlcSymbolEntry> found;
    int foundIn = -1;
    // Find the first variable in the nearest table that has one.
    for (auto entry = named->rbegin(); entry != named->rend(); ++entry) {
        if (entry->table > m_position || !entry->entry->IsVariable())
            continue;
        if (foundIn >= 0 && entry->table != foundIn)
            break;
        found = entry->entry;
        foundIn = entry->table;
    }
    return CheckCast<SlcVarSymbolEntry>(found);
}

SlcPtr<SlcVarSymbolEntry> SlcSymbolTable::FindVarEntry(SlcIdentNode* ident,
                                                       bool noDefinitionScope) const
{
    // The scopes in which the enclosing functions were defined, the outermost last.
    std::vector<SlcPtr<SlcSymbolTable>> definitionScopes;
    for (const SlcSymbolTable* table = this; table; table = table->NextScope()) {
        if (auto entry = table->FindVariable(ident))
            return entry;
        if (table->m_definitionScope && !(table == this && noDefinitionScope))
            definitionScopes.push_back(table->m_definitionScope);
    }
    // If the look-up failed, try the definition scopes from the outermost function inward.
    for (auto scope = definitionScopes.rbegin(); scope != definitionScopes.rend(); ++scope)
        if (auto entry = (*scope)->FindVarEntry(ident, false))
            return entry;
    return nullptr;
}

SlcPtr<SlcVarSymbolEntry> SlcSymbolTable::GetVarEntry(SlcIdentNode* ident,
                                                      bool noDefinitionScope) const
{
    if (auto entry = FindVarEntry(ident, noDefinitionScope))
        return entry;
    throw SlcSymbolNotFound{ident};
}

bool SlcSymbolTable::IsInCurrent(SlcIdentNode* ident, bool thisTableOnly) const
{
    if (const auto* named = m_scope->Find(ident->GetName())) {
        for (const auto& entry : *named)
            if (thisTableOnly ? entry.table == m_position : entry.table <= m_position)
                return true;
    }
    return !thisTableOnly && m_scope->m_previous && m_scope->m_previous->IsInCurrent(ident, false);
}

bool SlcSymbolTable::IsVarInTable(SlcIdentNode* ident) const
{
    for (const SlcSymbolTable* table = this; table; table = table->NextScope())
        if (table->FindVariable(ident))
            return true;
    return false;
}
