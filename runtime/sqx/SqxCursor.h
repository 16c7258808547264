#pragma once

#include <string>
#include <string_view>

/// The text of a byte-code file is not as it must be; the cursor holds the message. Caught by the
/// reader.
class SqxMalformed {};

/// Takes the text of a byte-code file apart, item by item. Items of one line are divided by
/// blanks; a quoted text may run over several lines. What is not there as asked for throws
/// `SqxMalformed`, also at the end of the text; the cursor is then good for its message only.
class SqxCursor {
public:
    /// `text` must outlive the cursor.
    explicit SqxCursor(std::string_view text) : m_text(text) {}

    // One item each, whatever follows it. `what` names the item in the message, as the begin of a
    // sentence: "Shader type".

    /// A decimal number that an int holds.
    [[nodiscard]] int ReadInt(const char* what);
    /// An int that is not negative.
    [[nodiscard]] int ReadCount(const char* what);
    /// 0 or 1.
    [[nodiscard]] bool ReadBool(const char* what);
    /// A finite number within the range of single precision. The locale does not matter.
    [[nodiscard]] double ReadFloat(const char* what);
    /// What stands up to the next blank or the end of the line, never empty. A part of the text.
    [[nodiscard]] std::string_view ReadWord(const char* what);
    /// With its quotes; escapes stay as they are.
    [[nodiscard]] std::string ReadQuoted(const char* what);
    /// Nothing more stands in this line.
    void EndLine();
    /// An item that fills its line.
    [[nodiscard]] int ReadIntLine(const char* what);
    [[nodiscard]] int ReadCountLine(const char* what);
    [[nodiscard]] bool ReadBoolLine(const char* what);
    /// The next line is `line`.
    void Expect(std::string_view line);
    /// No text is left.
    void ExpectEnd();

    /// What is read from here on belongs to this section, for the message.
    void Enter(std::string section) { m_section = std::move(section); }

    /// The line that the next item stands in, from 1.
    [[nodiscard]] int Line() const { return m_line; }
    /// Throws, with a message on the present line or on another one.
    [[noreturn]] void Fail(const std::string& message) { FailAt(m_line, message); }
    [[noreturn]] void FailAt(int line, const std::string& message);
    [[nodiscard]] const std::string& Message() const { return m_message; }
    [[nodiscard]] int FaultLine() const { return m_faultLine; }

private:
    void SkipBlanks();

    std::string_view m_text;  // what is still to be read
    int m_line = 1;
    std::string m_section;
    std::string m_message;  // with the line at fault and the section
    int m_faultLine = 0;
};

/// "line 12, main: " and the fault; without a section only the line.
[[nodiscard]] std::string SqxFaultText(int line, const std::string& section,
                                       const std::string& fault);

/// What a text holds that `ReadQuoted` gave: without its quotes, escapes as they are.
[[nodiscard]] std::string SqxUnquoted(const std::string& quoted);
/// The characters that such a text stands for, with the escapes of C; a backslash before another
/// character stands for nothing.
[[nodiscard]] std::string SqxLiteralText(const std::string& quoted);
