#pragma once

#include <cstdio>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "frontend/SlcSyntaxNode.h"
#include "frontend/SlcTokenValue.h"
#include "support/SlcCompilation.h"
#include "support/SlcSourcePosition.h"

/// The scanner of a compilation, which scans one source at a time: the generated scanner, and the
/// functions that the rules of scanner.l call to track the current file, line and column, and the
/// source line for reports. They keep them in `SlcCurrentPosition`, which no other code writes.
///
/// The rules receive the scanner: some ten operations are called per token, and looking the scanner
/// up in the compilation each time took a third of its time.
class SlcScanner {
public:
    static constexpr std::size_t k_maxTokenLength = 8191;

    SlcScanner();
    ~SlcScanner();
    SlcScanner(const SlcScanner&) = delete;
    SlcScanner& operator=(const SlcScanner&) = delete;

    /// Starts on a file, or on a text if `file` is null, without a file name until the first line
    /// marker. The text must live as long as tokens are read.
    static void Begin(std::FILE* file, std::string_view text = {});
    /// Returns the next token; 0 at the end of the source. Operators leave `value` unchanged.
    [[nodiscard]] static int Next(SlcTokenValue& value);
    /// Returns the text of the last token; valid until the next one.
    [[nodiscard]] static std::string_view TokenText();

    /// Returns the current position in the source.
    [[nodiscard]] static SlcPosition Position() { return Current().Here(); }
    /// Reads up to `size` characters of the source and returns their number; 0 at the end. A read
    /// error is reported.
    [[nodiscard]] static std::size_t Read(char* buffer, std::size_t size);

    // Operations that the rules call.

    [[nodiscard]] SlcPosition Here() const
    {
        return {m_position.line, m_position.column, m_position.file};
    }
    /// Begins a token: a rule matched `length` characters, which are consumed.
    void BeginToken(std::size_t length)
    {
        m_position.taken += length;
        m_position.tokenLength = static_cast<int>(length);
    }
    /// Unreads the last `count` characters that a rule matched; they will be scanned again.
    void GiveBack(std::size_t count) { m_position.taken -= count; }

    /// Records that the consumed text ends with a string literal that is not closed.
    void NoStringEndsHere() { m_noStringBefore = m_position.taken; }
    /// True if the quote that was just consumed may begin a string literal.
    [[nodiscard]] bool CanStringStart() const { return m_position.taken > m_noStringBefore; }

    /// Reports the last characters, which are not a token. The column does not advance.
    void RejectCharacter();

    /// Advances past the text of a token, with one filler per character. Ends the compilation with
    /// status 2 if the token is too long.
    void CountChars(std::string_view text, char filler);
    /// Advances past a skipped part of a line, of any length, without line breaks.
    void SkipText(std::string_view text);
    /// Advances past blanks and tabs between tokens. For reports, the last of them counts as a
    /// token.
    void SkipBlanks(std::string_view text);
    /// Counts a line whose text is already stored, so that its tokens are not appended to it again.
    void NewLine();
    /// Handles the newline rule: `text` is the line break and the whole next line. Ends the
    /// compilation with status 2 if the line is too long.
    void BeginLine(std::string_view text);
    /// Allows any length for the next line; called after a line with "#" and after a `//` comment.
    /// A generated source may be one long line after a line marker. Reports show its beginning.
    void AllowLongLine() { m_mayBeLong = true; }
    /// Handles the newline rule inside a comment, where lines may have any length.
    void BeginSkippedLine(std::string_view text);
    /// Handles a line that begins with "#", without its newline: a line marker of the preprocessor,
    /// in either form, or any other line, such as a pragma, which has no effect. A marker without a
    /// number or a quoted name has no effect either.
    void Directive(std::string_view text);

private:
    struct Generated;

    [[nodiscard]] static SlcScanner& Current() { return SlcPartOfCompilation<SlcScanner>(); }

    void BeginSource(std::FILE* file, std::string_view text);
    /// Resets the position to line 1, column 0.
    void ResetLineNumber();
    /// Resets the generated scanner.
    void Restart();
    [[nodiscard]] std::size_t ReadSource(char* buffer, std::size_t size);
    const std::string* FileName(std::string_view name);
    void AddFillers(std::size_t count, char filler);
    /// Counts the characters, and appends them to the line unless it is already complete.
    void AppendToLine(std::string_view text);

    SlcSourcePosition& m_position = SlcCurrentPosition();
    std::unique_ptr<Generated> m_generated;
    bool m_lineHeld = false;           // the newline rule has stored the whole current line
    bool m_mayBeLong = false;          // the next line may have any length
    std::FILE* m_file = nullptr;       // null if a text is read
    std::string_view m_text;           // the unread rest of the text
    std::size_t m_noStringBefore = 0;  // no literal that starts before this offset is closed
    std::set<std::string, std::less<>> m_fileNames;  // nodes point to them
};

/// The kinds of keywords that syntax coloring distinguishes.
enum class SlcWordKind { Shader, Detail, Type, Statement, Texture };

/// A reserved word of the language.
struct SlcKeyword {
    std::string_view word;
    int token;
    SlcWordKind kind;
};

/// Returns all reserved words.
[[nodiscard]] std::span<const SlcKeyword> SlcKeywords();

/// Returns the token for a word; `IDENTIFIER` if the word is not a keyword.
[[nodiscard]] int SlcKeywordToken(std::string_view word);
