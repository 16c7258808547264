#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Splits a text of intermediate code into tokens: words, numbers with their sign, quoted strings,
/// constants that begin with `#`, and operators and punctuation of one or two characters.
[[nodiscard]] std::vector<std::string> SlcSplitICodeText(std::string_view text);

/// True if all of `token` is a number.
[[nodiscard]] bool SlcIsICodeNumber(std::string_view token);

/// True for a letter, digit or underscore.
[[nodiscard]] bool SlcIsICodeWordChar(char c);
