#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "compiler/QxSourceIndex.h"
#include "frontend/SlcSyntaxNode.h"
#include "preprocessor/SlcPreprocessorTrace.h"

/// Maps places in the preprocessed text to places in files.
class SlcIndexPlaces {
public:
    static constexpr std::size_t k_none = static_cast<std::size_t>(-1);

    /// Trace and text must outlive the object.
    SlcIndexPlaces(const SlcPreprocessorTrace& trace, std::string_view text)
        : m_trace(trace),
          m_text(text)
    {
    }

    /// Returns the index of the first token at or after an offset; the number of tokens if there is
    /// none.
    [[nodiscard]] std::size_t TokenAt(std::size_t offset) const;
    /// Returns the index of the first token in a range with that text; `k_none` if there is none.
    [[nodiscard]] std::size_t Find(const SlcTextRange& range, std::string_view text) const;
    [[nodiscard]] const SlcPreprocessorTrace::Token& Token(std::size_t token) const
    {
        return m_trace.Tokens()[token];
    }

    /// Returns the place of a token's characters; if no file contains them, the use of its macro.
    [[nodiscard]] QxSourcePlace PlaceOf(std::size_t token) const;
    /// A word within the spelling of a token.
    struct Part {
        std::size_t token = k_none;
        std::size_t begin = 0;  // in characters of the token
        std::size_t length = 0;
    };
    /// Returns the first occurrence of a word in a range, ignoring the first `skipped` characters
    /// of the first token; its `token` is `k_none` if there is none. A word may be only a part of a
    /// token: the scanner skips characters that are not in the language, such as '$', but the
    /// preprocessor reads them as part of a word or as the start of a string.
    [[nodiscard]] Part FindPart(const SlcTextRange& range, std::string_view word,
                                std::size_t skipped) const;
    /// Returns the place of the characters of a part; that of the token if a line continuation
    /// splits it or no file contains it.
    [[nodiscard]] QxSourcePlace PlaceOf(const Part& part) const;
    /// Returns the place of a token as users see it: for one from a macro's body, or from no file,
    /// the use of the macro.
    [[nodiscard]] QxSourcePlace ShownPlaceOf(std::size_t token) const;
    /// Returns the range of the tokens in a range of the text; its `file` is -1 if there are none.
    [[nodiscard]] QxSourceRange RangeOf(const SlcTextRange& range) const;
    /// Returns the body of a definition, with its braces; the whole definition if it has no body.
    [[nodiscard]] SlcTextRange BodyOf(const SlcTextRange& definition) const;
    /// True if the range ends after the text: with a brace that is missing in the source, and that
    /// the parser added.
    [[nodiscard]] bool EndsAfterText(const SlcTextRange& range) const
    {
        return range.end > m_text.size();
    }
    /// Returns the text of a range, with one blank for each sequence of blanks, tabs and line
    /// breaks, also within strings.
    [[nodiscard]] std::string TextOf(const SlcTextRange& range) const;

    /// Converts a place of the trace.
    [[nodiscard]] static QxSourcePlace Public(const SlcPreprocessorTrace::Place& place);
    /// Returns the range from the beginning of `first` to the end of `last`; only `first` if they
    /// are in different files or in the wrong order.
    [[nodiscard]] static QxSourceRange Between(const QxSourcePlace& first,
                                               const QxSourcePlace& last);

private:
    const SlcPreprocessorTrace& m_trace;
    std::string_view m_text;
};
