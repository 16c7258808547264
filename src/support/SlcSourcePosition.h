#pragma once

#include <cstddef>
#include <string>

/// Where the scanner stands, for the reports that show a source line with a caret. The scanner
/// fills that of the compilation as it reads; nothing else writes to it. SlcDiagnostics.cpp shows
/// what comes of it.
struct SlcSourcePosition {
    const std::string* file = nullptr;  // name of the current file; null before the first marker
    int line = 1;
    int column = 0;            // characters taken from the current line
    int tokenLength = 0;       // of the last token
    std::string currentLine;   // the source line being scanned
    std::string filler;        // a blank or tab for each character up to the last token
    std::size_t taken = 0;     // characters of the source, up to the last token
    bool isAtEnd = false;      // the last token is the end of the source
    bool isUncounted = false;  // the last token is none, and the column stands before it
};

/// The scanner's position. The scanner is its only writer.
[[nodiscard]] SlcSourcePosition& SlcCurrentPosition();
