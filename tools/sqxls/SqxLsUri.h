#pragma once

#include <string>
#include <string_view>

/// Returns the path of a `file:` URI (RFC 8089), or a path that is given instead of one, absolute
/// and without "." and "..". Any other URI, such as that of a text that was never saved, is
/// returned unchanged.
[[nodiscard]] std::string SqxLsPathOf(std::string_view uri);

/// Returns the `file:` URI of an absolute path; any other text is a URI already.
[[nodiscard]] std::string SqxLsUriOf(std::string_view path);
