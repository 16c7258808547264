#pragma once

#include <optional>
#include <string>
#include <string_view>

/// A line of preprocessed text that names the origin of the lines after it, such as
/// `# 1 "a\"b.h" 2`.
struct SqxLineMarker {
    std::string file;
    bool enters = false;   // an included file begins
    bool returns = false;  // an included file has ended, and `file` continues
};

/// Reads a line marker. Returns nothing for any other line, and for a marker whose name is not a
/// file, such as `<built-in>`.
[[nodiscard]] std::optional<SqxLineMarker> SqxReadLineMarker(std::string_view line);
