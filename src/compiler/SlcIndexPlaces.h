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

    /// Both must outlive the object.
    SlcIndexPlaces(const SlcPreprocessorTrace& trace, std::string_view text)
        : m_trace(trace),
          m_text(text)
    {
    }

    /// The first token at or after an offset; their count if there is none.
    [[nodiscard]] std::size_t TokenAt(std::size_t offset) const;
    /// The first token of a range with that text; `k_none` if there is none.
    [[nodiscard]] std::size_t Find(const SlcTextRange& range, std::string_view text) const;
    [[nodiscard]] const SlcPreprocessorTrace::Token& Token(std::size_t token) const
    {
        return m_trace.Tokens()[token];
    }

    /// Where the characters of a token are.
    [[nodiscard]] QxSourcePlace PlaceOf(std::size_t token) const;
    /// A word in the spelling of a token.
    struct Part {
        std::size_t token = k_none;
        std::size_t begin = 0;  // in characters of the token
        std::size_t length = 0;
    };
    /// The first place of a word in a range, without the first `skipped` characters of the range.
    /// Characters that are no token of the language, such as '$', are part of a word or the
    /// beginning of a string to the preprocessor, and are skipped by the scanner.
    [[nodiscard]] Part FindPart(const SlcTextRange& range, std::string_view word,
                                std::size_t skipped) const;
    /// Where its characters are.
    [[nodiscard]] QxSourcePlace PlaceOf(const Part& part) const;
    /// The place of a token as readers see it: for one from a macro's body, the use of the macro.
    [[nodiscard]] QxSourcePlace ShownPlaceOf(std::size_t token) const;
    [[nodiscard]] QxSourceRange RangeOf(const SlcTextRange& range) const;
    /// The body of a definition, with its braces.
    [[nodiscard]] SlcTextRange BodyOf(const SlcTextRange& definition) const;
    /// It ends with a brace that the source lacks.
    [[nodiscard]] bool EndsAfterText(const SlcTextRange& range) const
    {
        return range.end > m_text.size();
    }
    /// The text of a range with single blanks.
    [[nodiscard]] std::string TextOf(const SlcTextRange& range) const;

    [[nodiscard]] static QxSourcePlace Public(const SlcPreprocessorTrace::Place& place);
    /// From the beginning of one place to the end of another; of the first alone if they are in
    /// two files or in the wrong order.
    [[nodiscard]] static QxSourceRange Between(const QxSourcePlace& first,
                                               const QxSourcePlace& last);

private:
    const SlcPreprocessorTrace& m_trace;
    std::string_view m_text;
};
