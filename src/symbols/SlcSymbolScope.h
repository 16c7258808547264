#pragma once

#include <string_view>
#include <unordered_map>
#include <vector>

#include "symbols/SlcSymbolTable.h"

/// The names of all tables of one scope, by the place of the table that each was added to. A table
/// at a place sees the names up to it.
class SlcSymbolScope : public SlcCollectable {
public:
    struct Named {
        int table;  // place of the table among those of the scope
        SlcPtr<SlcSymbolEntry> entry;
    };

    explicit SlcSymbolScope(SlcPtr<SlcSymbolTable> parent) : m_parent(std::move(parent)) {}

    /// Behind what that table has of the name already.
    virtual void Add(int table, SlcPtr<SlcSymbolEntry> entry);
    /// Every entry of the name, by table and then in order of insertion; null if there is none.
    [[nodiscard]] virtual const std::vector<Named>* Find(std::string_view name);

    SlcPtr<SlcSymbolTable> m_parent;
    SlcPtr<SlcSymbolTable> m_previous;  // where the scope forked off another; else null
    int m_tables = 0;

private:
    // Names are views of the entries' own identifiers, which live in their pool.
    std::unordered_map<std::string_view, std::vector<Named>> m_names;
};
