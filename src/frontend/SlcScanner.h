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

/// The scanner of a compilation, which scans one source at a time. It contains the generated
/// scanner and the functions that the rules of scanner.l call. These functions record the current
/// file, line and column, and the text of the line for reports, in `SlcCurrentPosition`, which the
/// rest of the compiler only reads.
///
/// The rules receive the scanner as a parameter. They call two or three of its functions per token;
/// looking it up in the compilation for each call took a third of the time of scanning.
class SlcScanner {
public:
    static constexpr std::size_t k_maxTokenLength = 8191;

    SlcScanner();
    ~SlcScanner();
    SlcScanner(const SlcScanner&) = delete;
    SlcScanner& operator=(const SlcScanner&) = delete;

    /// Starts to scan `file` or, if it is null, `text`. The position has no file name until the
    /// first line marker. The file or text must live as long as tokens are read.
    static void Begin(std::FILE* file, std::string_view text = {});
    /// Returns the next token; 0 at the end of the source. Only words, literals, `-` and `{` set
    /// `value`. Reports characters that belong to no token, and skips them. Ends the compilation
    /// with status 2 (`EndCompilation`) if a token or a line is too long.
    [[nodiscard]] static int Next(SlcTokenValue& value);
    /// Returns the text of the last token; valid until the next one.
    [[nodiscard]] static std::string_view TokenText();

    /// Returns the current position in the source, which is that of the end of the last token.
    [[nodiscard]] static SlcPosition Position() { return Current().Here(); }
    /// Reads up to `size` characters of the source and returns their number; 0 at the end. Replaces
    /// zero bytes, which would end the generated scanner. A read error is reported.
    [[nodiscard]] static std::size_t Read(char* buffer, std::size_t size);

    // Operations for the rules of scanner.l.

    [[nodiscard]] SlcPosition Here() const
    {
        return {m_position.line, m_position.column, m_position.file};
    }
    /// Records a match of any rule: `length` characters, which are consumed.
    void BeginToken(std::size_t length)
    {
        m_position.taken += length;
        m_position.tokenLength = static_cast<int>(length);
    }
    /// Records that the last `count` characters of a match are not consumed, but scanned again.
    void GiveBack(std::size_t count) { m_position.taken -= count; }

    /// Records that the consumed text ends with a string literal that is not closed.
    void NoStringEndsHere() { m_noStringBefore = m_position.taken; }
    /// True if the quote that was just consumed may begin a string literal that is closed.
    [[nodiscard]] bool CanStringStart() const { return m_position.taken > m_noStringBefore; }

    /// Reports the last match, a character that belongs to no token. The column does not advance.
    void RejectCharacter();

    /// Advances past the text of a token. Below the source line, reports print `filler` in place of
    /// each of its characters, up to the caret. Ends the compilation with status 2 if the token is
    /// too long.
    void CountChars(std::string_view text, char filler);
    /// Advances past a skipped part of a line, such as a comment. It may have any length, but must
    /// not contain a line break.
    void SkipText(std::string_view text);
    /// Advances past blanks, tabs, vertical tabs and form feeds between tokens. If the source ends
    /// with them, reports at its end point to the last of these characters.
    void SkipBlanks(std::string_view text);
    /// Advances to the next line, whose whole text has been stored: the text of its tokens is not
    /// appended to it again. Called by `BeginSkippedLine`, not by a rule.
    void NewLine();
    /// Handles a match of the rules for line breaks: `text` is the line break and the whole next
    /// line, which will be scanned next. Ends the compilation with status 2 if `text` is longer
    /// than `k_maxTokenLength`, unless `AllowLongLine` was called for the line.
    void BeginLine(std::string_view text);
    /// Allows any length for the next line; called after a line with "#" and after a `//` comment.
    /// A generated source may be one long line after a line marker. Reports show its beginning.
    void AllowLongLine() { m_mayBeLong = true; }
    /// Does the same as `BeginLine` inside a comment, where lines may have any length.
    void BeginSkippedLine(std::string_view text);
    /// Handles a line that begins with "#", without its newline. A line marker of the preprocessor,
    /// `# 3 "a.sl"` or `#line 3 "a.sl"`, sets the number and the file of the next line. All other
    /// lines have no effect, such as pragmas, and markers without a number or a quoted name.
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
    std::size_t m_noStringBefore = 0;  // up to it, no quote still to be scanned begins a literal
    std::set<std::string, std::less<>> m_fileNames;  // nodes point to them
};

/// The kinds of keywords that syntax coloring distinguishes.
enum class SlcWordKind { Shader, Detail, Type, Statement, Texture };

/// A keyword of the language. Those for kinds of shaders are also valid names; the others are
/// reserved.
struct SlcKeyword {
    std::string_view word;
    int token;
    SlcWordKind kind;
};

/// Returns all keywords.
[[nodiscard]] std::span<const SlcKeyword> SlcKeywords();

/// Returns the token for a word; `IDENTIFIER` if the word is not a keyword.
[[nodiscard]] int SlcKeywordToken(std::string_view word);
