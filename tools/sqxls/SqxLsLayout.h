#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "sqxls/SqxLsTokens.h"

/// The indentation of lines.
struct SqxLsIndent {
    std::size_t width = 4;  // columns of one level, and of a tab
    bool usesTabs = false;
};

/// A replacement of blanks and line breaks in a source.
struct SqxLsEdit {
    SqxLsSpan span;
    std::string text;
};

/// Returns the edits that format a source, in order. They change only blanks, also within comments,
/// the number of empty lines, and the end of the text: no line is split or joined. Formatting a
/// formatted source changes nothing. Returns no edits for a source with an unclosed comment or
/// string, or with an invalid byte. O(n), unless there are many comments on one long line.
[[nodiscard]] std::vector<SqxLsEdit> SqxLsLayoutOf(const SqxLsText& source,
                                                   const SqxLsIndent& indent);
