#pragma once

#include "symbols/SlcSymbolTable.h"

/// The scope of a statement, or of a shader's formals: the names that it sees. Attached to the
/// node, and removed with the tree (`SlcDeleteTree`).
class SlcStatementInfo : public SlcAnnotation {
public:
    explicit SlcStatementInfo(SlcPtr<SlcSymbolTable> table) : m_table(std::move(table)) {}
    [[nodiscard]] const SlcPtr<SlcSymbolTable>& GetTable() const { return m_table; }
    /// Breaks the cycle of tables, entries and annotations.
    void ClearTable() { m_table = nullptr; }

private:
    SlcPtr<SlcSymbolTable> m_table;
};
