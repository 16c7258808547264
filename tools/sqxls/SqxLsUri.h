#pragma once

#include <string>
#include <string_view>

/// The path that a `file:` URI names (RFC 8089) or that is given in place of one, absolute and
/// without "." and ".."; of another URI, such as that of a text which was never saved, the URI
/// itself.
[[nodiscard]] std::string SqxLsPathOf(std::string_view uri);

/// The `file:` URI of an absolute path; what is no such path is a URI already.
[[nodiscard]] std::string SqxLsUriOf(std::string_view path);
