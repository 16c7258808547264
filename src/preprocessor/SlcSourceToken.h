#pragma once

#include <cstdint>
#include <string_view>

/// The macros that must not replace a token, as a set of `SlcHideSets`. 0 is the empty set.
using SlcHideSet = std::uint32_t;

enum class SlcSourceTokenKind : std::uint8_t {
    End,        // the end of a file, or of separately expanded tokens
    NewLine,    // the end of a line; only directives get it
    Name,       // of letters, digits, "_" and "$"
    Number,     // a preprocessing number, a superset of the numbers of any language
    Text,       // between double quotes
    Character,  // between apostrophes
    Sign,
    Other,  // any other byte; also an unmatched quote with the rest of its line
    Empty,  // an empty argument next to "##"
};

/// A preprocessing token. Its text and place point into a `SlcSourceText` or a text of the run,
/// which live until the end of the run.
struct SlcSourceToken {
    std::string_view text;
    const char* at = nullptr;  // in the file; for a token from a macro, where the macro is used
    int line = 0;              // line of that place, as set by `#line`
    int column = 0;            // column of that place in bytes, from 1
    SlcHideSet hidden = 0;
    SlcSourceTokenKind kind = SlcSourceTokenKind::End;
    bool spaceBefore = false;  // a blank or a comment
    bool startsLine = false;
    bool fromMacro = false;

    [[nodiscard]] bool Is(SlcSourceTokenKind other, std::string_view word) const
    {
        return kind == other && text == word;
    }
    [[nodiscard]] bool IsSign(std::string_view sign) const
    {
        return Is(SlcSourceTokenKind::Sign, sign);
    }
    [[nodiscard]] bool EndsLine() const
    {
        return kind == SlcSourceTokenKind::NewLine || kind == SlcSourceTokenKind::End;
    }
};
