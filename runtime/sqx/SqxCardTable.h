#pragma once

#include <array>
#include <string_view>

#include "sqx/SqxCardReader.h"

// The cards as constants, for files that compute other tables from them. Reading the cards takes
// time in each compile, so other files include SqxCard.h.

// Each card is a separate constant, since compilers limit the steps of evaluating one constant.
inline constexpr SqxCard k_sqxCards[] = {
#define SQX_READ(primitive, ...)                                                                   \
    [] {                                                                                           \
        constexpr SqxCard k_card = SqxReadCard(SqxPrimitive::primitive, __VA_ARGS__);              \
        return k_card;                                                                             \
    }(),
#define SQX_CARD(primitive, text) SQX_READ(primitive, text)
#define SQX_FUNCTION(primitive, text, ...) SQX_READ(primitive, text, #__VA_ARGS__)
#define SQX_SCENE_FUNCTION(primitive, text, ...) SQX_READ(primitive, text, #__VA_ARGS__)
#define SQX_UNARY(primitive, text, ...) SQX_READ(primitive, text, {}, #__VA_ARGS__)
#define SQX_BINARY(primitive, text, ...) SQX_READ(primitive, text, {}, #__VA_ARGS__)
#define SQX_OVERLOAD(primitive, text) SQX_READ(primitive, text)
#include "sqx/SqxCards.def"
#undef SQX_READ
};

/// The names of the forms of a primitive, in the order of `SqxCard::numbers`.
using SqxFormNames = std::array<std::string_view, SqxCard::k_forms>;

inline constexpr SqxFormNames k_sqxFormNames[] = {
#define SQX_CARD(primitive, text)                                                                  \
    {#primitive, #primitive "_SIMD", #primitive "_SIMD_IF_TRUE", #primitive "_IF_TRUE"},
#include "sqx/SqxCards.def"
};

[[nodiscard]] constexpr const SqxFormNames& SqxFormNamesOf(SqxPrimitive primitive)
{
    return k_sqxFormNames[static_cast<std::size_t>(primitive)];
}

inline constexpr int k_sqxHighestNumber = [] {
    int highest = 0;
    for (const SqxCard& card : k_sqxCards)
        for (const short number : card.numbers)
            highest = number > highest ? number : highest;
    return highest;
}();

/// The card and form that a number belongs to.
struct SqxNumbered {
    const SqxCard* card = nullptr;
    std::size_t form = 0;
    // Tested instead of `card`: GCC 12 cannot compare the address of a card with null while it
    // compiles for the undefined-behaviour sanitizer.
    bool isAssigned = false;
};

inline constexpr auto k_sqxNumbered = [] {
    std::array<SqxNumbered, k_sqxHighestNumber + 1> numbered{};
    for (const SqxCard& card : k_sqxCards)
        for (std::size_t form = 0; form < SqxCard::k_forms; ++form) {
            const auto number = static_cast<std::size_t>(card.numbers[form]);
            if (numbered[number].isAssigned)
                throw SqxCardFault{"two forms have one number"};
            if (number > 0)
                numbered[number] = {&card, form, true};
        }
    return numbered;
}();
