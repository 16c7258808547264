#pragma once

#include <string>
#include <string_view>

/// Thrown for malformed text; the cursor holds the message. Caught by `SqxReader::Read` and
/// `SqxObjectFacts`.
class SqxMalformed {};

/// Reads the text of a byte-code file item by item. Items in one line are separated by blanks; a
/// quoted text may span several lines. A missing or malformed item throws `SqxMalformed`; after
/// that only `Message` and `FaultLine` may be called.
class SqxCursor {
public:
    /// `text` must outlive the cursor.
    explicit SqxCursor(std::string_view text) : m_text(text) {}

    // The next functions, up to `ReadQuoted`, read one item and leave the rest of the line unread.
    // `what` names the item at the start of a message: "Shader type".

    /// A decimal number in the range of int.
    [[nodiscard]] int ReadInt(const char* what);
    /// An int that is not negative.
    [[nodiscard]] int ReadCount(const char* what);
    /// 0 or 1.
    [[nodiscard]] bool ReadBool(const char* what);
    /// A finite number within the range of single precision, with a decimal point in any locale.
    /// Returns 0 for a number that is too small for a double.
    [[nodiscard]] double ReadFloat(const char* what);
    /// The text up to the next blank or the end of the line or file, never empty. A view of the
    /// text.
    [[nodiscard]] std::string_view ReadWord(const char* what);
    /// Reads a quoted text; the result includes the quotes and unchanged escapes.
    [[nodiscard]] std::string ReadQuoted(const char* what);
    /// Reads the end of the line, which must be next.
    void EndLine();
    // The same for the last item of a line: these also read the end of the line.

    [[nodiscard]] int ReadIntLine(const char* what);
    [[nodiscard]] int ReadCountLine(const char* what);
    [[nodiscard]] bool ReadBoolLine(const char* what);

    /// Reads a line, which must be `line`.
    void Expect(std::string_view line);
    /// Requires that no text is left.
    void ExpectEnd();
    /// The text that was not read yet.
    [[nodiscard]] std::string_view Rest() const { return m_text; }

    /// Begins a section, which later messages name.
    void Enter(std::string section) { m_section = std::move(section); }

    /// The line of the next item, from 1.
    [[nodiscard]] int Line() const { return m_line; }
    /// Throws `SqxMalformed` with a message for the current line or for a given one.
    [[noreturn]] void Fail(const std::string& message) { FailAt(m_line, message); }
    [[noreturn]] void FailAt(int line, const std::string& message);
    [[nodiscard]] const std::string& Message() const { return m_message; }
    [[nodiscard]] int FaultLine() const { return m_faultLine; }

private:
    void SkipBlanks();

    std::string_view m_text;  // the rest to be read
    int m_line = 1;
    std::string m_section;
    std::string m_message;  // with line and section
    int m_faultLine = 0;
};

/// Formats "line 12, main: " and the fault; without a section only the line.
[[nodiscard]] std::string SqxFaultText(int line, const std::string& section,
                                       const std::string& fault);

/// Removes the quotes from a text returned by `ReadQuoted`; escapes are unchanged.
[[nodiscard]] std::string SqxUnquoted(const std::string& quoted);
/// Returns the characters that a text returned by `ReadQuoted` represents, with the letter and
/// octal escapes of C; a backslash before any other character is removed.
[[nodiscard]] std::string SqxLiteralText(const std::string& quoted);
