#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Where the lines of a wrapped text begin and end.
struct SqxLineLimits {
    std::size_t width;       // most characters of a line, if no word is longer
    std::size_t indent = 0;  // of all lines but the first, which is taken to begin there
};

/// The words of a text in lines. `spell` says how each word is written; null leaves it as it is.
[[nodiscard]] std::string SqxWrapped(std::string_view words, const SqxLineLimits& limits,
                                     std::string (*spell)(std::string_view) = nullptr);
