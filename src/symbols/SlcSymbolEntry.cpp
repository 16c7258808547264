// An `extern` name has no separate operand: its operand is that of the variable that it refers to.

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
