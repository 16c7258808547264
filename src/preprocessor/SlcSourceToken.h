#pragma once

#include <cstdint>
#include <string_view>

/// A set of macros that a token must not be replaced by, kept by `SlcHideSets`. 0 is the empty set.
using SlcHideSet = std::uint32_t;

enum class SlcSourceTokenKind : std::uint8_t {
    End,        // of a file, or of tokens that are expanded by themselves
    NewLine,    // the end of a line; only directives see it
    Name,       // of letters, digits, "_" and "$"
    Number,     // a preprocessing number, which holds more than the numbers of any language
    Text,       // between double quotes
    Character,  // between apostrophes
    Sign,
    Other,  // any other byte; from a quote without its match, the rest of the line
    Empty,  // an empty argument next to "##"
};

/// A preprocessing token. Its text and place point into a `SlcSourceText` or the run's own texts,
/// which last as long as the run.
struct SlcSourceToken {
    std::string_view text;
    const char* at = nullptr;  // in the file; of a token from a macro, the place of the macro's use
    int line = 0;              // of that place, as `#line` directives have it
    int column = 0;            // of that place in bytes, from 1
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
