#pragma once

#include <span>
#include <string_view>

/// A word that has a meaning in a string or in a directive.
struct SqxLsWord {
    std::string_view word;
    std::string_view meaning;
};

/// Names of the predefined coordinate systems.
[[nodiscard]] std::span<const SqxLsWord> SqxLsSpaces();
/// Names of color spaces.
[[nodiscard]] std::span<const SqxLsWord> SqxLsColorSpaces();
/// Named arguments of `texture`, `environment` and `shadow`.
[[nodiscard]] std::span<const SqxLsWord> SqxLsTextureArguments();
/// Words of preprocessor directives, after a '#'.
[[nodiscard]] std::span<const SqxLsWord> SqxLsDirectives();
