#pragma once

#include <string_view>

#include "sqx/SqxPrimitive.h"

// The vocabulary of compiled shaders: the number of each instruction. The numbers are a contract
// between the compiler and all that reads its files: they never change, and a new instruction
// takes a new one. They are in the cards, see SqxCards.def.

[[nodiscard]] int SqxHighestNumber();

/// The name of a number; empty for one that is not assigned.
[[nodiscard]] std::string_view SqxNumberName(int number);

/// The number of an instruction by its name, with the suffix of its form; 0 if there is none.
[[nodiscard]] short SqxNumberNamed(std::string_view name);

/// A pair of instructions that stand around others.
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

[[nodiscard]] constexpr bool SqxOpensBracket(SqxPrimitive primitive)
{
    for (const SqxBracketRow& row : k_sqxBrackets)
        if (row.begin == primitive)
            return true;
    return false;
}

/// `primitive` is the end of a bracket that `begin` opens.
[[nodiscard]] constexpr bool SqxClosesBracket(SqxPrimitive begin, SqxPrimitive primitive)
{
    for (const SqxBracketRow& row : k_sqxBrackets)
        if (row.begin == begin && row.end == primitive)
            return true;
    return false;
}

/// `primitive` is the end of some bracket.
[[nodiscard]] constexpr bool SqxClosesBracket(SqxPrimitive primitive)
{
    for (const SqxBracketRow& row : k_sqxBrackets)
        if (row.end == primitive)
            return true;
    return false;
}
