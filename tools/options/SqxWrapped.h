#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The margins of a wrapped text.
struct SqxLineLimits {
    std::size_t width;       // maximum length of a line, unless a word is longer
    std::size_t indent = 0;  // of all lines; the caller writes that of the first
};

/// Returns the text broken into lines, the last without a line break. `spell` converts each word;
/// null leaves words unchanged.
[[nodiscard]] std::string SqxWrapped(std::string_view words, const SqxLineLimits& limits,
                                     std::string (*spell)(std::string_view) = nullptr);
