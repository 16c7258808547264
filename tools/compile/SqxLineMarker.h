#pragma once

#include <optional>
#include <string>
#include <string_view>

/// A line of a preprocessed text that tells where what follows comes from, as `# 1 "a\"b.h" 2`.
struct SqxLineMarker {
    std::string file;
    bool enters = false;   // the file begins: the one at hand includes it
    bool returns = false;  // to the file, behind one that it has included
};

/// Nothing for another line, or for one that names what is no file, such as `<built-in>`.
[[nodiscard]] std::optional<SqxLineMarker> SqxReadLineMarker(std::string_view line);
