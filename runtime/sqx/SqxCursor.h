#pragma once

#include <string>
#include <string_view>

/// The text of a byte-code file is not as it must be; the cursor holds the message. Caught by the
/// reader.
class SqxMalformed {};

/// Takes the text of a byte-code file apart, item by item. Items of one line are divided by
/// blanks; a quoted text may run over several lines. What is not there as asked for throws
/// `SqxMalformed`.
class SqxCursor {
public:
    /// `text` must outlive the cursor.
    explicit SqxCursor(std::string_view text) : m_text(text) {}

    /// `what` names the item in the message.
    [[nodiscard]] int ReadInt(const char* what);
    /// An int that is not negative.
    [[nodiscard]] int ReadCount(const char* what);
    [[nodiscard]] bool ReadBool(const char* what);
    [[nodiscard]] double ReadFloat(const char* what);
    [[nodiscard]] std::string ReadWord(const char* what);
    /// With its quotes.
    [[nodiscard]] std::string ReadQuoted(const char* what);
    /// Nothing more stands in this line.
    void EndLine();
    /// An item that fills its line.
    [[nodiscard]] int ReadIntLine(const char* what);
    [[nodiscard]] int ReadCountLine(const char* what);
    [[nodiscard]] bool ReadBoolLine(const char* what);
    /// The next line is `line`.
    void Expect(std::string_view line);
    void ExpectEnd();

    [[noreturn]] void Fail(const std::string& message);
    [[nodiscard]] const std::string& Message() const { return m_message; }

private:
    void SkipBlanks();

    std::string_view m_text;  // what is still to be read
    int m_line = 1;
    std::string m_message;  // with the line at fault
};

/// Without its quotes.
[[nodiscard]] std::string SqxUnquoted(const std::string& quoted);
