#pragma once

#include <cstddef>
#include <string>

#include "support/SlcCompilation.h"

/// The scanner's position, from which nodes and reports get their places; SlcDiagnostics.cpp prints
/// the source line with a caret. Only the scanner updates it.
struct SlcSourcePosition {
    const std::string* file = nullptr;  // name of the current file; null before the first marker
    int line = 1;
    int column = 0;            // characters read from the current line, without invalid ones
    int tokenLength = 0;       // of the last match of a rule; 1 for blanks
    std::string currentLine;   // the source line being scanned, or its beginning
    std::string filler;        // a blank per character up to `column`, or a tab outside tokens
    std::size_t taken = 0;     // characters of the source read, including the last token
    bool isAtEnd = false;      // the last token is the end of the source
    bool isUncounted = false;  // the report is about a character that `column` does not count
};

/// Returns the scanner's position in the current compilation.
[[nodiscard]] inline SlcSourcePosition& SlcCurrentPosition()
{
    return SlcPartOfCompilation<SlcSourcePosition>();
}
