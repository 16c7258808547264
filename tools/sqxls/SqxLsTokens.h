#pragma once

#include <string_view>
#include <vector>

#include "sqxls/SqxLsText.h"

/// A token of a source that is not preprocessed: comments and directives are tokens too, and the
/// name of a macro is a word.
struct SqxLsToken {
    enum class Kind {
        Word,
        Keyword,
        Number,
        Text,  // a string, with its quotes
        Sign,
        Comment,
        Directive,  // from the '#' to the end of the line, with continuation lines
        Broken,     // an unclosed comment or string, or an invalid byte
    };

    Kind kind = Kind::Broken;
    SqxLsSpan span;
    std::string_view text;  // a part of the source
};

/// Returns the tokens of a source, which must outlive them. Only blanks and line breaks are between
/// tokens. O(n).
[[nodiscard]] std::vector<SqxLsToken> SqxLsTokensOf(std::string_view source);

/// Returns for each bracket the index of its partner; for any other token, and for a bracket
/// without a partner, its own index.
[[nodiscard]] std::vector<std::size_t> SqxLsPartnersOf(const std::vector<SqxLsToken>& tokens);
