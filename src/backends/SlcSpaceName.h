#pragma once

#include <string>
#include <string_view>

/// Returns `text` as part of an identifier: ASCII letters, digits and "_" stay; any other byte
/// becomes "_", its two hexadecimal digits, "_". Two texts may have the same result.
[[nodiscard]] std::string SlcNameAsCId(std::string_view text);

/// Returns the macro for the number of a coordinate space in generated code; `literal` includes the
/// quotes.
[[nodiscard]] std::string SlcMatrixIndexName(const std::string& literal);
