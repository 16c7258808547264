// Sets of points, each known by its supersets.
//
//     f?( g = x < 1; )                   the points where f is true: set 1, in set 0, all points
//     not f?( g = false; )               set 2, the rest of set 0. Now g is true only in set 1
//     g?( y = 2; )                       set 3, in sets 0 and 1
//     f = f1; f?( ... )                  f has changed: set 4, in set 0
//
// Tested by tests/backends/ValueSpansTest.cpp.

#include "backends/SlcPointSets.h"

namespace {

/// The most sets that a search looks at, so that many guards do not cost quadratic time.
constexpr std::size_t k_mostSearched = 64;

}  // namespace

int SlcPointSets::SetOf(const Key& key)
{
    const auto [known, isNew] = m_known.try_emplace(key, static_cast<int>(m_sets.size()));
    if (!isNew)
        return known->second;
    Set set;
    set.key = key;
    set.supersets.push_back(key.whole);
    if (const auto rest = m_known.find({key.whole, key.flag, key.changes, !key.wanted});
        rest != m_known.end()) {
        set.rest = rest->second;
        m_sets[rest->second].rest = known->second;
    }
    const Flag& state = m_flags[key.flag];
    if (key.wanted && state.changesOfFacts == key.changes)
        for (const Fact& fact : state.facts)
            if (IsWithin(key.whole, fact.among))
                set.supersets.push_back(fact.set);
    m_sets.push_back(std::move(set));
    return known->second;
}

void SlcPointSets::AddFact(const SlcOperand& flag, const Fact& fact)
{
    Flag& state = m_flags[flag];
    if (state.changesOfFacts != state.changes)
        state.facts.clear();
    state.changesOfFacts = state.changes;
    state.facts.push_back(fact);
}

void SlcPointSets::Clear(const SlcOperand& flag)
{
    // The flag is true only where it was, and not at the points of the current set.
    const int before = SelectFromAll(flag, true);
    const Key guard = m_sets[Current()].key;
    const int rest =
        guard.flag ? SetOf({guard.whole, guard.flag, guard.changes, !guard.wanted}) : -1;
    Change(flag);
    AddFact(flag, {m_all, before});
    if (guard.flag)
        AddFact(flag, {guard.whole, rest});
}

void SlcPointSets::StartAgain()
{
    const std::size_t depth = m_current.empty() ? 1 : m_current.size();
    m_all = static_cast<int>(m_sets.size());
    m_sets.emplace_back();
    // What the open guards select now is not known, except that it is nested.
    m_current.assign(1, m_all);
    while (m_current.size() < depth) {
        Set set;
        set.supersets.push_back(m_current.back());
        m_current.push_back(static_cast<int>(m_sets.size()));
        m_sets.push_back(std::move(set));
    }
}

bool SlcPointSets::IsWithin(int inner, int outer) const
{
    std::vector<int> search{inner};
    for (std::size_t i = 0; i < search.size() && i < k_mostSearched; ++i) {
        if (search[i] == outer)
            return true;
        const std::vector<int>& supersets = m_sets[search[i]].supersets;
        search.insert(search.end(), supersets.begin(), supersets.end());
    }
    return false;
}

int SlcPointSets::UnionOfParts(int first, int second) const
{
    return m_sets[first].rest == second ? m_sets[first].key.whole : -1;
}
