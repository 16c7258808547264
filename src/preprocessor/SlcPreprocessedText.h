#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "preprocessor/SlcPreprocessorTrace.h"
#include "preprocessor/SlcSourceToken.h"

/// From this place of the preprocessed text on, up to the next such place or the end of the line,
/// columns are not those of the file.
struct SlcColumnChange {
    std::size_t offset = 0;
    int column = 0;        // in the file, of the character at the offset
    bool isFixed = false;  // all of it comes from a macro that is used at that column
};

/// Writes the preprocessed text: tokens on their lines, with line markers where newlines would not
/// do. Blanks are kept, and comments become blanks, so that a line that uses no macro has its
/// columns as in the file.
class SlcPreprocessedText {
public:
    /// `trace` may be null.
    explicit SlcPreprocessedText(SlcPreprocessorTrace* trace) : m_trace(trace) {}

    /// A file begins; an included one if something has been written before.
    void EnterFile(const std::string& name);
    /// Goes on after an included file.
    void ReturnToFile(const std::string& name, int line);
    /// `#line`: the next line has this number and is of this file.
    void SetPlace(const std::string& name, int line);

    void Add(const SlcSourceToken& token);
    /// A whole line that no macro changes, such as a pragma.
    void AddLine(std::string_view text, int line);
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
    int m_line = 1;                   // of the file, where the text ends
    std::size_t m_lineBegin = 0;      // of the text
    bool m_isOpen = false;            // the line holds something
    const char* m_lastEnd = nullptr;  // in the file, of the last token; null after one of a macro
    const char* m_lastTextEnd = nullptr;
    bool m_lastFromMacro = false;
    int m_shift = 0;  // of columns, up to the next change
};
