#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "sqxls/SqxLsTokens.h"

/// How deeply lines are indented.
struct SqxLsIndent {
    std::size_t width = 4;
    bool usesTabs = false;
};

/// Blanks of a source to be replaced.
struct SqxLsEdit {
    SqxLsSpan span;
    std::string text;
};

/// The edits that lay a source out again, in their order. They replace blanks alone, so that the
/// tokens remain what they are; applied to their own result they change nothing. The breaks of
/// lines remain too. Empty for a source with a comment or a text that does not end. O(n).
[[nodiscard]] std::vector<SqxLsEdit> SqxLsLayoutOf(const SqxLsText& source,
                                                   const SqxLsIndent& indent);
