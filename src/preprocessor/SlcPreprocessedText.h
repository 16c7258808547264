#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "preprocessor/SlcPreprocessorTrace.h"
#include "preprocessor/SlcSourceToken.h"

/// A place in the preprocessed text at which the relation between its columns and those of the file
/// changes. The new relation holds up to the next such place or the end of the line. Before the
/// first such place in a line, the columns are equal.
struct SlcColumnChange {
    std::size_t offset = 0;
    int column = 0;        // in the file, of the character at the offset
    bool isFixed = false;  // the whole part comes from the macro used at that column
};

/// Writes the preprocessed text: tokens on their lines, with a line marker where line breaks do not
/// suffice. Blanks are kept and comments become blanks, so that a line without macros has the same
/// columns as in the file.
class SlcPreprocessedText {
public:
    /// `trace` may be null.
    explicit SlcPreprocessedText(SlcPreprocessorTrace* trace) : m_trace(trace) {}

    /// Begins a file: an included one if something has been written before.
    void EnterFile(const std::string& name);
    /// Continues after an included file.
    void ReturnToFile(const std::string& name, int line);
    /// Handles `#line` or a line marker: the next line gets this number and belongs to the file
    /// `name`.
    void SetPlace(const std::string& name, int line);

    /// Adds a token, after the line breaks and blanks that precede it in the file, or a line
    /// marker.
    void Add(const SlcSourceToken& token);
    /// Adds a whole line in which no macros are replaced, such as a pragma.
    void AddLine(std::string_view text, int line);
    /// Ends the last line unless it is empty.
    void Finish();

    [[nodiscard]] std::string& Text() { return m_text; }
    [[nodiscard]] std::vector<SlcColumnChange>& Columns() { return m_columns; }

private:
    void Marker(const std::string& name, int line, std::string_view flag);
    void EndLine();
    void MoveTo(int line);
    /// Adds the white space between the last written token and this one.
    void AddGap(const SlcSourceToken& token);
    void NoteColumn(const SlcSourceToken& token);

    SlcPreprocessorTrace* m_trace;
    std::string m_text;
    std::vector<SlcColumnChange> m_columns;
    std::string m_name;
    int m_line = 1;                   // line of the file at the end of the text
    std::size_t m_lineBegin = 0;      // offset of the current line in the text
    bool m_isOpen = false;            // the current line is not empty
    const char* m_lastEnd = nullptr;  // end of the last token in the file; null if from a macro
    const char* m_lastTextEnd = nullptr;
    bool m_lastFromMacro = false;
    int m_shift = 0;  // column in the file minus column in the text, since the last change
};
