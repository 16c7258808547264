// Compares the tree of colors with the definition: the first color that is free at all places of a
// variable.

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "optimizer/SlcRangeColors.h"

namespace {

/// Returns up to four ranges that neither overlap nor touch.
std::vector<SlcLiveRange> RandomRanges(std::mt19937& random)
{
    std::vector<SlcLiveRange> ranges;
    int place = static_cast<int>(random() % 40) - 1;
    for (unsigned int count = random() % 5; count > 0; --count) {
        const int last = place + static_cast<int>(random() % 6);
        ranges.push_back({place, last});
        place = last + 2 + static_cast<int>(random() % 12);
    }
    return ranges;
}

class PlainColors {
public:
    int Take(const std::vector<SlcLiveRange>& ranges)
    {
        std::set<int> places;
        for (const SlcLiveRange& range : ranges)
            for (int place = range.first; place <= range.last; ++place)
                places.insert(place);
        std::size_t color = 0;
        while (color < m_taken.size() && Meets(m_taken[color], places))
            ++color;
        if (color == m_taken.size())
            m_taken.emplace_back();
        m_taken[color].insert(places.begin(), places.end());
        return static_cast<int>(color);
    }

private:
    static bool Meets(const std::set<int>& taken, const std::set<int>& places)
    {
        for (const int place : places)
            if (taken.count(place) != 0)
                return true;
        return false;
    }

    std::vector<std::set<int>> m_taken;
};

}  // namespace

TEST(SlcRangeColors, AssignTheFirstFreeColor)
{
    for (unsigned int seed = 1; seed <= 50; ++seed) {
        std::mt19937 random(seed);
        SlcRangeColors colors;
        PlainColors plain;
        for (int variable = 0; variable < 150; ++variable) {
            const std::vector<SlcLiveRange> ranges = RandomRanges(random);
            ASSERT_EQ(colors.Take(ranges), plain.Take(ranges))
                << "seed " << seed << ", variable " << variable;
        }
    }
}
