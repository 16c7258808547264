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

/// A replacement for blanks of a source.
struct SqxLsEdit {
    SqxLsSpan span;
    std::string text;
};

/// Returns the edits that format a source, in order. They replace only blanks and keep all tokens
/// and line breaks. Formatting a formatted source changes nothing. Empty for a source with an
/// unclosed comment or string. O(n).
[[nodiscard]] std::vector<SqxLsEdit> SqxLsLayoutOf(const SqxLsText& source,
                                                   const SqxLsIndent& indent);
