#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

#include "preprocessor/SlcSourceToken.h"

/// The hide sets of Prosser's algorithm. The hide set of a token contains macros whose replacement
/// led to the token. Equal sets have equal numbers. The results of operations are cached, since the
/// same few sets occur again and again.
class SlcHideSets {
public:
    SlcHideSets();

    [[nodiscard]] bool Contains(SlcHideSet set, std::uint32_t macro) const;
    /// Returns the set with the macro added.
    [[nodiscard]] SlcHideSet With(SlcHideSet set, std::uint32_t macro);
    [[nodiscard]] SlcHideSet Union(SlcHideSet first, SlcHideSet second);
    [[nodiscard]] SlcHideSet Intersection(SlcHideSet first, SlcHideSet second);
    [[nodiscard]] std::size_t Size(SlcHideSet set) const { return m_sets[set]->size(); }

private:
    using Members = std::vector<std::uint32_t>;  // in ascending order
    using Results = std::unordered_map<std::uint64_t, SlcHideSet>;

    [[nodiscard]] SlcHideSet NumberOf(Members members);
    [[nodiscard]] static std::uint64_t PairOf(std::uint32_t first, std::uint32_t second)
    {
        return std::uint64_t{first} << 32 | second;
    }

    std::map<Members, SlcHideSet> m_numbers;
    std::vector<const Members*> m_sets;  // keys of the map, by number
    Results m_extended;                  // by set and macro
    Results m_unions;
    Results m_intersections;
};
