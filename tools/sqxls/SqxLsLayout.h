#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "sqxls/SqxLsTokens.h"

/// The indentation of lines.
struct SqxLsIndent {
    std::size_t width = 4;
    bool usesTabs = false;
};

/// A replacement of blanks in a source.
struct SqxLsEdit {
    SqxLsSpan span;
    std::string text;
};

/// Returns the edits that format a source, in order. They replace only blanks and keep all tokens
/// and line breaks. Formatting a formatted source changes nothing. Returns no edits for a source
/// with an unclosed comment or string, or with an invalid byte. O(n).
[[nodiscard]] std::vector<SqxLsEdit> SqxLsLayoutOf(const SqxLsText& source,
                                                   const SqxLsIndent& indent);
