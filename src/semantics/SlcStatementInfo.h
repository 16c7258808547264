#pragma once

#include "symbols/SlcSymbolTable.h"

/// Stores a symbol table as the annotation of a node: for a shader, the table of its formals; for a
/// block or a light statement, the table at its start; for a declaration or the definition of a
/// nested function, the table that contains its names.
class SlcStatementInfo : public SlcAnnotation {
public:
    explicit SlcStatementInfo(SlcPtr<SlcSymbolTable> table) : m_table(std::move(table)) {}
    [[nodiscard]] const SlcPtr<SlcSymbolTable>& GetTable() const { return m_table; }
    /// Releases the table, when `SlcDeleteTree` breaks the cycles of tables, entries and facts
    /// about functions.
    void ClearTable() { m_table = nullptr; }

private:
    SlcPtr<SlcSymbolTable> m_table;
};
