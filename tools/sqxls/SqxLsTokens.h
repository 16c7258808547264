#pragma once

#include <string_view>
#include <vector>

#include "sqxls/SqxLsText.h"

/// A piece of a source between blanks, as someone who lays it out sees it: comments and lines of
/// the preprocessor are tokens too, and macros are words.
struct SqxLsToken {
    enum class Kind {
        Word,
        Keyword,
        Number,
        Text,  // with its quotes
        Sign,
        Comment,
        Directive,  // from the '#' to the end of the line, with the lines that continue it
        Broken,     // a comment or a text that does not end, a byte that begins nothing
    };

    Kind kind = Kind::Broken;
    SqxLsSpan span;
    std::string_view text;  // a part of the source
};

/// The tokens of a source, which must outlive them. O(n). Between two of them stand blanks alone.
[[nodiscard]] std::vector<SqxLsToken> SqxLsTokensOf(std::string_view source);

/// For each token that is a bracket the position of its partner; for every other token, and for a
/// bracket without a partner, its own position.
[[nodiscard]] std::vector<std::size_t> SqxLsPartnersOf(const std::vector<SqxLsToken>& tokens);
