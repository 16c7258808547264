// The names of one scope, each with the tables that it was added to, in the order of these: a table
// sees what stands at its own place or before it. A look-up is a hash and a binary search.
//
// Tested by tests/symbols/SlcSymbolTableTest.cpp.

#include "symbols/SlcSymbolScope.h"

#include <algorithm>
#include <utility>

void SlcSymbolScope::Add(int table, SlcPtr<SlcSymbolEntry> entry)
{
    auto& named = m_names[entry->GetName()];
    // An earlier table of the scope can still get a name after a later one has been made.
    const auto place = std::upper_bound(named.begin(), named.end(), table,
                                        [](int t, const Named& n) { return t < n.table; });
    named.insert(place, {table, std::move(entry)});
}

const std::vector<SlcSymbolScope::Named>* SlcSymbolScope::Find(std::string_view name)
{
    const auto found = m_names.find(name);
    return found == m_names.end() ? nullptr : &found->second;
}
