#pragma once

#include <string>
#include <string_view>

/// `text` as part of an identifier: a letter, digit or "_" stays, any other character becomes "_",
/// its two hexadecimal digits, "_". Two texts may give one name.
[[nodiscard]] std::string SlcNameAsCId(std::string_view text);

/// The macro by which generated code numbers a coordinate space; `literal` with its quotes.
[[nodiscard]] std::string SlcMatrixIndexName(const std::string& literal);
