// Look-ups in the table of cards. The indexes are computed when this file is compiled.
//
// Tested by tests/backends/CardTest.cpp.

#include <algorithm>
#include <cstdint>

#include "sqx/SqxCardTable.h"
#include "sqx/SqxNumbers.h"

namespace {

/// One row per heading or card, in order: the title of a heading, an empty text for a card.
constexpr std::string_view k_titles[] = {
#define SQX_CARD(primitive, text) {},
#define SQX_OVERLOAD(primitive, text) {},
#define SQX_CHAPTER(title) title,
#include "sqx/SqxCards.def"
};

/// The index of the first card of each primitive, by primitive.
constexpr auto k_byPrimitive = [] {
    std::array<short, k_sqxPrimitiveCount> cards{};
    // Goes backwards, so that the first card of a primitive is stored last.
    for (std::size_t i = std::size(k_sqxCards); i-- > 0;)
        cards[static_cast<std::size_t>(k_sqxCards[i].primitive)] = static_cast<short>(i);
    return cards;
}();

constexpr std::size_t k_namedCount = [] {
    std::size_t count = 0;
    for (const SqxCard& card : k_sqxCards)
        count += card.name.length > 0 ? 1 : 0;
    return count;
}();

/// The cards that have a name, sorted by it; cards with the same name keep their order.
constexpr auto k_byName = [] {
    std::array<const SqxCard*, k_namedCount> cards{};
    auto end = cards.begin();
    for (const SqxCard& card : k_sqxCards) {
        if (card.name.length == 0)
            continue;
        // Not std::sort, which is not stable.
        auto place = end++;
        for (; place != cards.begin() && card.Name() < (*(place - 1))->Name(); --place)
            *place = *(place - 1);
        *place = &card;
    }
    return cards;
}();

// A hash table of the numbers by name, with linear probing

constexpr std::size_t k_slots = 2048;

/// Returns the slot where the search for a name starts. The hash is FNV-1a (Glenn Fowler, Landon
/// Curt Noll, Phong Vo).
constexpr std::size_t FirstSlotOf(std::string_view name)
{
    std::uint32_t hash = 2166136261U;
    for (const char c : name)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash % k_slots;
}

/// The number in each slot; 0 for an empty one.
constexpr auto k_bySlot = [] {
    std::array<short, k_slots> slots{};
    for (const SqxCard& card : k_sqxCards)
        for (std::size_t form = 0; form < SqxCard::k_forms; ++form) {
            if (card.numbers[form] == 0)
                continue;
            std::size_t slot = FirstSlotOf(SqxFormNamesOf(card.primitive)[form]);
            while (slots[slot] != 0)
                slot = (slot + 1) % k_slots;
            slots[slot] = card.numbers[form];
        }
    return slots;
}();
static_assert(k_slots > 2 * k_sqxHighestNumber, "most names are to be found at their first slot");

}  // namespace

std::string_view SqxPrimitiveName(SqxPrimitive primitive)
{
    return SqxFormNamesOf(primitive)[0];
}

std::string_view SqxFormName(SqxPrimitive primitive, SqxForm form)
{
    return SqxFormNamesOf(primitive)[static_cast<std::size_t>(form)];
}

std::optional<SqxPrimitive> SqxPrimitiveNamed(std::string_view name)
{
    for (const SqxCard& card : k_sqxCards)
        if (SqxPrimitiveName(card.primitive) == name)
            return card.primitive;
    return std::nullopt;
}

std::span<const SqxCard> SqxCards()
{
    return k_sqxCards;
}

const SqxCard& SqxCardOf(SqxPrimitive primitive)
{
    return k_sqxCards[k_byPrimitive[static_cast<std::size_t>(primitive)]];
}

std::span<const SqxCard* const> SqxCardsNamed(std::string_view function)
{
    const auto begin = std::lower_bound(
        k_byName.begin(), k_byName.end(), function,
        [](const SqxCard* card, std::string_view name) { return card->Name() < name; });
    const auto end = std::upper_bound(
        begin, k_byName.end(), function,
        [](std::string_view name, const SqxCard* card) { return name < card->Name(); });
    return {begin, end};
}

std::string_view SqxChapterOf(const SqxCard& card)
{
    std::string_view chapter;
    const SqxCard* next = k_sqxCards;
    for (const std::string_view title : k_titles) {
        if (!title.empty())
            chapter = title;
        else if (next++ == &card)
            break;
    }
    return card.name.length > 0 ? chapter : std::string_view();
}

int SqxHighestNumber()
{
    return k_sqxHighestNumber;
}

std::string_view SqxNumberName(int number)
{
    if (number < 0 || number > k_sqxHighestNumber)
        return {};
    const SqxNumbered& numbered = k_sqxNumbered[static_cast<std::size_t>(number)];
    if (!numbered.IsAssigned())
        return {};
    return SqxFormNamesOf(numbered.Card().primitive)[numbered.form];
}

short SqxNumberNamed(std::string_view name)
{
    for (std::size_t slot = FirstSlotOf(name); k_bySlot[slot] != 0; slot = (slot + 1) % k_slots)
        if (SqxNumberName(k_bySlot[slot]) == name)
            return k_bySlot[slot];
    return 0;
}
