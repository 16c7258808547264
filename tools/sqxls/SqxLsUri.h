#pragma once

#include <string>
#include <string_view>

/// Returns the absolute path of a URI that starts with `file://` (RFC 8089), without host name, "."
/// and "..". Some clients send a path in place of a URI, which is accepted too. Any other URI, such
/// as that of a text that was never saved, is returned unchanged.
[[nodiscard]] std::string SqxLsPathOf(std::string_view uri);

/// Returns the `file:` URI of an absolute path. Any other text is taken as a URI and returned
/// unchanged.
[[nodiscard]] std::string SqxLsUriOf(std::string_view path);
