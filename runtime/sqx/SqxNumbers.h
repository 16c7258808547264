#pragma once

#include <string_view>

#include "sqx/SqxPrimitive.h"

// The numbers of instructions in byte-code. They are a contract between the compiler and all
// readers of its files: numbers never change, and a new instruction gets a new one. They are part
// of the cards, see SqxCards.def.

/// Returns the highest number that is assigned.
[[nodiscard]] int SqxHighestNumber();

/// Returns the name of the instruction with this number, with the suffix of its form; empty if the
/// number is not assigned.
[[nodiscard]] std::string_view SqxNumberName(int number);

/// Returns the number of an instruction by its name, with the suffix of its form; 0 if there is
/// none.
[[nodiscard]] short SqxNumberNamed(std::string_view name);

/// A bracket: a pair of instructions that enclose others.
struct SqxBracketRow {
    SqxPrimitive begin;
    SqxPrimitive end;
};

inline constexpr SqxBracketRow k_sqxBrackets[] = {
    {SqxPrimitive::BEGIN_PARALLEL, SqxPrimitive::END_PARALLEL},
    {SqxPrimitive::IF_TRUE, SqxPrimitive::END_IF},
    {SqxPrimitive::IF_FALSE, SqxPrimitive::END_IF},
    {SqxPrimitive::BEGIN_ILLUMINANCE, SqxPrimitive::END_ILLUMINANCE},
};

/// True if `primitive` starts a bracket.
[[nodiscard]] constexpr bool SqxOpensBracket(SqxPrimitive primitive)
{
    for (const SqxBracketRow& row : k_sqxBrackets)
        if (row.begin == primitive)
            return true;
    return false;
}

/// True if `primitive` ends a bracket that `begin` starts.
[[nodiscard]] constexpr bool SqxClosesBracket(SqxPrimitive begin, SqxPrimitive primitive)
{
    for (const SqxBracketRow& row : k_sqxBrackets)
        if (row.begin == begin && row.end == primitive)
            return true;
    return false;
}

/// True if `primitive` ends a bracket.
[[nodiscard]] constexpr bool SqxClosesBracket(SqxPrimitive primitive)
{
    for (const SqxBracketRow& row : k_sqxBrackets)
        if (row.end == primitive)
            return true;
    return false;
}
