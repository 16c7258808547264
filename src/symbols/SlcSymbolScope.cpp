// The entries of a name are sorted by the position of the table that they were added to: a table
// sees the entries at its own position or before it. A look-up hashes the name and then searches
// its entries: for a variable from the last one, for the overloads of a call by binary search.
//
// Tested by tests/symbols/SlcSymbolTableTest.cpp.

#include "symbols/SlcSymbolScope.h"

#include <algorithm>
#include <utility>

void SlcSymbolScope::Add(int table, SlcPtr<SlcSymbolEntry> entry)
{
    auto& named = m_names[entry->GetName()];
    // A name can still be added to an earlier table after a later one has been made.
    const auto place = std::upper_bound(named.begin(), named.end(), table,
                                        [](int t, const Named& n) { return t < n.table; });
    named.insert(place, {table, std::move(entry)});
}

const std::vector<SlcSymbolScope::Named>* SlcSymbolScope::Find(std::string_view name)
{
    const auto found = m_names.find(name);
    return found == m_names.end() ? nullptr : &found->second;
}
