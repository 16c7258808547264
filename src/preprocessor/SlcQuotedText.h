#pragma once

#include <string>
#include <string_view>

// Literals of texts, as C writes them.

/// Returns the text with a backslash before each double quote and each backslash.
[[nodiscard]] std::string SlcEscaped(std::string_view text);
/// Returns the escaped text in double quotes.
[[nodiscard]] std::string SlcQuoted(std::string_view text);
/// Returns the contents of a text in quotes, without the backslashes of escapes.
[[nodiscard]] std::string SlcUnquoted(std::string_view text);
