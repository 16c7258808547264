#pragma once

#include <span>
#include <string_view>

/// A word that stands in a string, and what it is for.
struct SqxLsWord {
    std::string_view word;
    std::string_view meaning;
};

[[nodiscard]] std::span<const SqxLsWord> SqxLsSpaces();
[[nodiscard]] std::span<const SqxLsWord> SqxLsColorSpaces();
/// Named arguments of `texture`, `environment` and `shadow`.
[[nodiscard]] std::span<const SqxLsWord> SqxLsTextureArguments();
/// What comes after a '#'.
[[nodiscard]] std::span<const SqxLsWord> SqxLsDirectives();
