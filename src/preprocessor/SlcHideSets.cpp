// Tested by tests/preprocessor.

#include "preprocessor/SlcHideSets.h"

#include <algorithm>
#include <iterator>
#include <utility>

SlcHideSets::SlcHideSets()
{
    static_cast<void>(NumberOf({}));
}

SlcHideSet SlcHideSets::NumberOf(Members members)
{
    const auto next = static_cast<SlcHideSet>(m_sets.size());
    const auto [found, isNew] = m_numbers.emplace(std::move(members), next);
    if (isNew)
        m_sets.push_back(&found->first);
    return found->second;
}

bool SlcHideSets::Contains(SlcHideSet set, std::uint32_t macro) const
{
    return set != 0 && std::binary_search(m_sets[set]->begin(), m_sets[set]->end(), macro);
}

SlcHideSet SlcHideSets::With(SlcHideSet set, std::uint32_t macro)
{
    const auto [found, isNew] = m_extended.emplace(PairOf(set, macro), 0);
    if (isNew) {
        Members members = *m_sets[set];
        const auto place = std::lower_bound(members.begin(), members.end(), macro);
        if (place == members.end() || *place != macro)
            members.insert(place, macro);
        found->second = NumberOf(std::move(members));
    }
    return found->second;
}

SlcHideSet SlcHideSets::Union(SlcHideSet first, SlcHideSet second)
{
    if (first == second || second == 0)
        return first;
    if (first == 0)
        return second;
    const auto [found, isNew] = m_unions.emplace(PairOf(first, second), 0);
    if (isNew) {
        Members members;
        std::set_union(m_sets[first]->begin(), m_sets[first]->end(), m_sets[second]->begin(),
                       m_sets[second]->end(), std::back_inserter(members));
        found->second = NumberOf(std::move(members));
    }
    return found->second;
}

SlcHideSet SlcHideSets::Intersection(SlcHideSet first, SlcHideSet second)
{
    if (first == second)
        return first;
    if (first == 0 || second == 0)
        return 0;
    const auto [found, isNew] = m_intersections.emplace(PairOf(first, second), 0);
    if (isNew) {
        Members members;
        std::set_intersection(m_sets[first]->begin(), m_sets[first]->end(), m_sets[second]->begin(),
                              m_sets[second]->end(), std::back_inserter(members));
        found->second = NumberOf(std::move(members));
    }
    return found->second;
}
