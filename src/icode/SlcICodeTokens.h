#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The tokens of a text of intermediate code: words, numbers with their sign, texts in quotes,
/// constants after `#`, and signs of one or two characters.
[[nodiscard]] std::vector<std::string> SlcSplitICodeText(std::string_view text);

/// Whether all of `token` is a number.
[[nodiscard]] bool SlcIsICodeNumber(std::string_view token);

/// A letter, digit or underscore.
[[nodiscard]] bool SlcIsICodeWordChar(char c);
