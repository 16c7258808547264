#pragma once

#include <cstdint>
#include <string_view>

/// The macros that must not replace a token: the number of a set in `SlcHideSets`; 0 is empty.
using SlcHideSet = std::uint32_t;

enum class SlcSourceTokenKind : std::uint8_t {
    End,        // the end of a file, or of separately expanded tokens
    NewLine,    // the end of a line, at which directives end
    Name,       // of letters, digits, "_" and "$"
    Number,     // a preprocessing number of C; each number of a shader is one
    Text,       // between double quotes; also the name after `#include`
    Character,  // between apostrophes
    Sign,
    Other,  // any other byte; also an unmatched quote with the rest of its line
    Empty,  // an empty argument, or no name after `#include`
};

/// A preprocessing token. `text` and `at` point into a `SlcSourceText`, a text that the run has
/// stored, or a constant; all exist until the end of the run.
struct SlcSourceToken {
    std::string_view text;
    const char* at = nullptr;  // in the file; for a token from a macro, where the macro is used
    int line = 0;              // line of `at`, as numbered by `#line`
    int column = 0;            // column of `at` in bytes, from 1
    SlcHideSet hidden = 0;
    SlcSourceTokenKind kind = SlcSourceTokenKind::End;
    bool spaceBefore = false;  // a blank or a comment precedes the token
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
