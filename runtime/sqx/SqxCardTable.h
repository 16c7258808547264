#pragma once

#include <array>
#include <string_view>

#include "sqx/SqxCardReader.h"

// The cards as constants, for files that compute other tables from them. Each file that includes
// this one takes longer to compile, since it reads all cards, so other files include SqxCard.h.

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

// The tables contain no more pointers than they must: each is relocated at the start of a program.

/// The names of all primitives with the endings of two forms, one after the other.
inline constexpr std::string_view k_sqxNames =
#define SQX_CARD(primitive, text) #primitive "_SIMD_IF_TRUE" #primitive "_IF_TRUE"
#include "sqx/SqxCards.def"
    ;

/// The lengths of the names of the primitives.
inline constexpr unsigned char k_sqxNameLengths[] = {
#define SQX_CARD(primitive, text) sizeof(#primitive) - 1,
#include "sqx/SqxCards.def"
};

/// The names of the forms of a primitive, in the order of `SqxCard::numbers`.
class SqxFormNames {
public:
    /// The names begin in `k_sqxNames` at `at`, and that of the plain form has `length` characters.
    constexpr SqxFormNames(std::size_t at = 0, std::size_t length = 0)
        : m_at(static_cast<unsigned short>(at)),
          m_length(static_cast<unsigned char>(length))
    {
    }

    [[nodiscard]] constexpr std::string_view operator[](std::size_t form) const
    {
        const std::string_view last = "_IF_TRUE";
        const std::string_view endings[] = {"", "_SIMD", "_SIMD_IF_TRUE", last};
        const std::size_t at = form + 1 < SqxCard::k_forms ? m_at : End() - m_length - last.size();
        return k_sqxNames.substr(at, m_length + endings[form].size());
    }
    /// Returns where the names end.
    [[nodiscard]] constexpr std::size_t End() const
    {
        return m_at + 2 * m_length + std::string_view("_SIMD_IF_TRUE_IF_TRUE").size();
    }

private:
    unsigned short m_at;
    unsigned char m_length;
};

inline constexpr auto k_sqxFormNames = [] {
    std::array<SqxFormNames, std::size(k_sqxNameLengths)> names;
    std::size_t at = 0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        names[i] = {at, k_sqxNameLengths[i]};
        at = names[i].End();
    }
    return names;
}();
static_assert(k_sqxNames.size() < 1 << 16, "offsets of names have 16 bits");

[[nodiscard]] constexpr SqxFormNames SqxFormNamesOf(SqxPrimitive primitive)
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
    short end = 0;  // index in `k_sqxCards` of the card after it; 0 if the number is not assigned
    short form = 0;

    [[nodiscard]] constexpr bool IsAssigned() const { return end > 0; }
    [[nodiscard]] constexpr const SqxCard& Card() const { return k_sqxCards[end - 1]; }
};

inline constexpr auto k_sqxNumbered = [] {
    std::array<SqxNumbered, k_sqxHighestNumber + 1> numbered{};
    for (std::size_t card = 0; card < std::size(k_sqxCards); ++card)
        for (std::size_t form = 0; form < SqxCard::k_forms; ++form) {
            const auto number = static_cast<std::size_t>(k_sqxCards[card].numbers[form]);
            if (numbered[number].IsAssigned())
                throw SqxCardFault{"two forms have one number"};
            if (number > 0)
                numbered[number] = {static_cast<short>(card + 1), static_cast<short>(form)};
        }
    return numbered;
}();
