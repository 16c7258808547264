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

/// Reads a line marker: any line that starts with `#` and contains a text in quotes. Returns
/// nothing for other lines, and for a marker whose name starts with `<`, such as `<built-in>`.
[[nodiscard]] std::optional<SqxLineMarker> SqxReadLineMarker(std::string_view line);
