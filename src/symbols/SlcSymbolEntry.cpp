#include "symbols/SlcSymbolEntry.h"

#include <utility>

SlcVarSymbolEntry::SlcVarSymbolEntry(SlcIdentNode* ident, SlcTypeNode* type, SlcDetailNode* detail,
                                     SlcStorageSpecNode* storage, bool hidden,
                                     SlcPtr<SlcVarSymbolEntry> outer)
    : SlcSymbolEntry(ident),
      m_type(type),
      m_detail(detail),
      m_storage(storage),
      m_hidden(hidden),
      m_outer(std::move(outer))
{
}

SlcVarSymbolEntry::~SlcVarSymbolEntry() = default;

SlcPtr<SlcLexType>& SlcVarSymbolEntry::GetIntCodeVar()
{
    return m_storage->IsExtern() && m_outer ? m_outer->GetIntCodeVar() : m_operand;
}

void SlcVarSymbolEntry::SetModifiedInScope(bool maybe)
{
    if (m_modified != SlcUsageState::Always)
        m_modified = maybe ? SlcUsageState::Maybe : SlcUsageState::Always;
}

void SlcVarSymbolEntry::SetAccessedInScope(bool maybe, bool isRead)
{
    if (!maybe)
        m_accessed = SlcUsageState::Always;
    else if (m_accessed == SlcUsageState::Never)
        m_accessed = SlcUsageState::Maybe;
    if (!isRead || m_hidden || m_storage->IsInput())
        return;
    if (m_storage->IsOutput()) {
        if (m_modified != SlcUsageState::Always)
            m_read = SlcUsageState::Maybe;
    } else if (m_modified == SlcUsageState::Never) {
        m_read = m_accessed;
    } else if (m_modified == SlcUsageState::Maybe) {
        m_read = SlcUsageState::Maybe;
    }
}
