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

/// The scanner of a compilation, which scans one source at a time: the generated one, and what the
/// rules of scanner.l call to keep the current file, line and column, and the source line for
/// reports. Their state is that of `SlcCurrentPosition`, which only these operations write.
///
/// The rules get the object, since to look it up in the compilation for each of some ten operations
/// a token took a third of the scanner's time.
class SlcScanner {
public:
    static constexpr std::size_t k_maxTokenLength = 8191;

    SlcScanner();
    ~SlcScanner();
    SlcScanner(const SlcScanner&) = delete;
    SlcScanner& operator=(const SlcScanner&) = delete;

    /// Starts on a file, or on a text if that is null, without a file name until the first line
    /// marker. The text must last as long as tokens are read.
    static void Begin(std::FILE* file, std::string_view text = {});
    /// The next token; 0 at the end of the source. Operators leave the value as it is.
    [[nodiscard]] static int Next(SlcTokenValue& value);
    /// The text of the last token, up to the next one.
    [[nodiscard]] static std::string_view TokenText();

    /// Where the scanner is in the source.
    [[nodiscard]] static SlcPosition Position() { return Current().Here(); }
    /// The next characters of the source; 0 at its end. A failure to read is reported.
    [[nodiscard]] static std::size_t Read(char* buffer, std::size_t size);

    // For the rules.

    [[nodiscard]] SlcPosition Here() const
    {
        return {m_position.line, m_position.column, m_position.file};
    }
    /// A rule matched so many characters, which are taken.
    void BeginToken(std::size_t length)
    {
        m_position.taken += length;
        m_position.tokenLength = static_cast<int>(length);
    }
    /// So many of the characters that a rule took will be read again.
    void GiveBack(std::size_t count) { m_position.taken -= count; }

    /// The string literal that begins with what was just taken has no end in all of it.
    void NoStringEndsHere() { m_noStringBefore = m_position.taken; }
    /// The quote that was just taken may be the first of a string literal.
    [[nodiscard]] bool CanStringStart() const { return m_position.taken > m_noStringBefore; }

    /// Reports the last characters, which are no token. The column does not move.
    void RefuseCharacter();

    /// Accounts for the text of a token with one filler character each. Ends the process with
    /// status 2 if it is too long.
    void CountChars(std::string_view text, char filler);
    /// Accounts for a part of a line that is skipped, of any length; no newline is in it.
    void SkipText(std::string_view text);
    /// Blanks and tabs between tokens. The last of them counts as a token for reports.
    void SkipBlanks(std::string_view text);
    /// Counts a line; its text is held, so that its tokens are not appended to it again.
    void NewLine();
    /// The newline rule: `text` is the line break and the whole next line. Ends the process with
    /// status 2 if it is too long.
    void BeginLine(std::string_view text);
    /// The next line may have any length: generated sources of one line follow a line marker.
    /// Reports show its beginning.
    void AllowLongLine() { m_mayBeLong = true; }
    /// The newline rule inside a comment, where a line has any length.
    void BeginSkippedLine(std::string_view text);
    /// A line that begins with "#", without its newline: a line marker of the preprocessor, in
    /// either form, or anything else, such as a pragma, that changes nothing. A marker without a
    /// number or a quoted name changes nothing either.
    void Directive(std::string_view text);

private:
    struct Generated;

    [[nodiscard]] static SlcScanner& Current() { return SlcPartOfCompilation<SlcScanner>(); }

    void BeginSource(std::FILE* file, std::string_view text);
    /// Line 1, column 0.
    void ResetLineNumber();
    /// Resets the generated scanner.
    void Restart();
    [[nodiscard]] std::size_t ReadSource(char* buffer, std::size_t size);
    const std::string* FileName(std::string_view name);
    /// Counts the characters, and adds them to a line that is not held.
    void AddFillers(std::size_t count, char filler);
    void AppendToLine(std::string_view text);

    SlcSourcePosition& m_position = SlcCurrentPosition();
    std::unique_ptr<Generated> m_generated;
    bool m_lineHeld = false;           // the current line came whole from the newline rule
    bool m_mayBeLong = false;          // the next line
    std::FILE* m_file = nullptr;       // null if the text is read
    std::string_view m_text;           // what is left of it
    std::size_t m_noStringBefore = 0;  // no literal that starts before so many has an end
    std::set<std::string, std::less<>> m_fileNames;  // nodes point at them
};

/// The kinds of keywords that syntax coloring distinguishes.
enum class SlcWordKind { Shader, Detail, Type, Statement, Texture };

/// A word that the language keeps for itself.
struct SlcKeyword {
    std::string_view word;
    int token;
    SlcWordKind kind;
};

[[nodiscard]] std::span<const SlcKeyword> SlcKeywords();

/// The token for a word; that of identifiers for a word that is no keyword.
[[nodiscard]] int SlcKeywordToken(std::string_view word);
