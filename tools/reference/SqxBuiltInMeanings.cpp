// Tested by tests/reference/run.sh.

#include "reference/SqxBuiltInMeanings.h"

#include <vector>

#include "sqx/SqxCard.h"

std::span<const SqxBuiltInMeaning> SqxBuiltInMeanings()
{
    static const std::vector<SqxBuiltInMeaning> meanings = [] {
        std::vector<SqxBuiltInMeaning> all;
        for (const SqxCard& card : SqxCards())
            if (card.meaning.length > 0)
                all.push_back({card.Name(), SqxChapterOf(card), card.Text(card.meaning)});
        return all;
    }();
    return meanings;
}
