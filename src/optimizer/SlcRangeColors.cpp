// The tree; each node lists the code where all colors below it are taken:
//
//              [3..4]
//         [3..6]    [1..4]              a variable live at 4 needs a new color, see the root; one
//     [0..6] [3..9] [1..4] [0..4]       live only at 5 and 6 gets the third color, since the left
//                                       half is full
//
// Tested by tests/optimizer/SlcRangeColorsTest.cpp against a search that tries color after color.

#include "optimizer/SlcRangeColors.h"

#include <algorithm>

namespace {

using Ranges = std::vector<SlcLiveRange>;

/// Returns the first range that ends at or after the place.
template <class List>
[[nodiscard]] auto FirstReaching(List& ranges, int place)
{
    return std::lower_bound(ranges.begin(), ranges.end(), place,
                            [](const SlcLiveRange& range, int at) { return range.last < at; });
}

/// True if a range of `a` overlaps one of `b`. Searches the longer list for each range of the
/// shorter one.
[[nodiscard]] bool Overlap(const Ranges& a, const Ranges& b)
{
    const Ranges& few = a.size() < b.size() ? a : b;
    const Ranges& many = a.size() < b.size() ? b : a;
    return std::any_of(few.begin(), few.end(), [&](const SlcLiveRange& range) {
        const auto found = FirstReaching(many, range.first);
        return found != many.end() && found->first <= range.last;
    });
}

[[nodiscard]] Ranges Common(const Ranges& few, const Ranges& many)
{
    Ranges common;
    for (const SlcLiveRange& range : few)
        for (auto found = FirstReaching(many, range.first);
             found != many.end() && found->first <= range.last; ++found)
            common.push_back(
                {std::max(found->first, range.first), std::min(found->last, range.last)});
    return common;
}

/// Adds `added`, which must not overlap `ranges`; merges adjacent ranges.
void Merge(Ranges& ranges, const Ranges& added)
{
    for (const SlcLiveRange& range : added) {
        auto next = FirstReaching(ranges, range.first);
        if (next != ranges.begin() && std::prev(next)->last == range.first - 1) {
            auto before = std::prev(next);
            before->last = range.last;
            if (next != ranges.end() && next->first == range.last + 1) {
                before->last = next->last;
                ranges.erase(next);
            }
        } else if (next != ranges.end() && next->first == range.last + 1) {
            next->first = range.first;
        } else {
            ranges.insert(next, range);
        }
    }
}

}  // namespace

int SlcRangeColors::Take(const Ranges& ranges)
{
    if (m_colors == m_leaves)
        Grow();
    const int color = FirstFree(1, ranges);
    m_colors = std::max(m_colors, static_cast<std::size_t>(color) + 1);
    Occupy(color, ranges);
    return color;
}

/// The old tree becomes the left half; the colors of the right half are free everywhere.
void SlcRangeColors::Grow()
{
    std::vector<Ranges> larger(4 * m_leaves);
    for (std::size_t width = 1; width <= m_leaves; width *= 2)
        for (std::size_t i = 0; i < width; ++i)
            larger[2 * width + i] = std::move(m_taken[width + i]);
    m_taken.swap(larger);
    m_leaves *= 2;
}

int SlcRangeColors::FirstFree(std::size_t node, const Ranges& ranges) const
{
    if (Overlap(m_taken[node], ranges))
        return -1;
    if (node >= m_leaves)
        return static_cast<int>(node - m_leaves);
    const int left = FirstFree(2 * node, ranges);
    return left >= 0 ? left : FirstFree(2 * node + 1, ranges);
}

void SlcRangeColors::Occupy(int color, const Ranges& ranges)
{
    std::size_t node = m_leaves + static_cast<std::size_t>(color);
    Merge(m_taken[node], ranges);
    Ranges added = ranges;
    for (; node > 1 && !added.empty(); node /= 2) {
        added = Common(added, m_taken[node ^ 1U]);
        Merge(m_taken[node / 2], added);
    }
}
