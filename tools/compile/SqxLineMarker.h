#pragma once

#include <optional>
#include <string>
#include <string_view>

/// A line of a preprocessed text that gives the origin of the lines after it, as `# 1 "a\"b.h" 2`.
struct SqxLineMarker {
    std::string file;
    bool enters = false;   // the file begins: the current one includes it
    bool returns = false;  // to the file, after one that it has included
};

/// Nothing for another line, or for one that names what is no file, such as `<built-in>`.
[[nodiscard]] std::optional<SqxLineMarker> SqxReadLineMarker(std::string_view line);
