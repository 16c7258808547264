#pragma once

#include <span>
#include <string_view>

/// A word in a string, and its purpose.
struct SqxLsWord {
    std::string_view word;
    std::string_view meaning;
};

[[nodiscard]] std::span<const SqxLsWord> SqxLsSpaces();
[[nodiscard]] std::span<const SqxLsWord> SqxLsColorSpaces();
/// Named arguments of `texture`, `environment` and `shadow`.
[[nodiscard]] std::span<const SqxLsWord> SqxLsTextureArguments();
/// Words of directives, after a '#'.
[[nodiscard]] std::span<const SqxLsWord> SqxLsDirectives();
