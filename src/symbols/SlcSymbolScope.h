#pragma once

#include <string_view>
#include <unordered_map>
#include <vector>

#include "symbols/SlcSymbolTable.h"

/// The names of all tables of one scope, each with the position of the table that it was added to.
/// A table sees the names up to its own position.
class SlcSymbolScope : public SlcCollectable {
public:
    struct Named {
        int table;  // position of the table among those of the scope
        SlcPtr<SlcSymbolEntry> entry;
    };

    explicit SlcSymbolScope(SlcPtr<SlcSymbolTable> parent) : m_parent(std::move(parent)) {}

    /// Adds the entry after those that the table already has for the name.
    virtual void Add(int table, SlcPtr<SlcSymbolEntry> entry);
    /// Returns all entries of the name, by table and then in order of insertion; null if there are
    /// none.
    [[nodiscard]] virtual const std::vector<Named>* Find(std::string_view name);

    SlcPtr<SlcSymbolTable> m_parent;
    SlcPtr<SlcSymbolTable> m_previous;  // if this scope is a fork of another scope, the table at
                                        // which it forked; otherwise null
    int m_tables = 0;

private:
    // The keys refer to the entries' identifiers, which live in their pool.
    std::unordered_map<std::string_view, std::vector<Named>> m_names;
};
