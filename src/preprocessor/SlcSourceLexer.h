#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "preprocessor/SlcSourceText.h"
#include "preprocessor/SlcSourceToken.h"

/// Splits a source into the preprocessing tokens of C (C99 6.4), and skips blanks and comments.
/// Shading sources are not C: text that is not a token of C becomes tokens of kind `Other`, so that
/// nothing is lost.
///
/// A lexer is a value: use a copy to look ahead.
class SlcSourceLexer {
public:
    /// Receives faults in comments. Each function gets the two characters that begin the comment.
    struct Listener {
        std::function<void(const SlcSourceToken& comment)> unfinishedComment;
        std::function<void(const SlcSourceToken& start)> commentInComment;
    };

    /// `text` must outlive the lexer and its tokens, and the listener must outlive the lexer.
    /// Without a listener, faults are not reported.
    explicit SlcSourceLexer(const SlcSourceText& text, const Listener* listener = nullptr);
    /// Reads a text in memory that ends with a line break, which a zero byte must follow.
    SlcSourceLexer(const char* begin, const char* end);

    /// Returns the next token. At the end of the text, returns `End` on every call.
    [[nodiscard]] SlcSourceToken Next();
    /// Reads the name after `#include`, with its quotes or angle brackets. If the text does not
    /// continue with one, returns a token of kind `Empty` and consumes only blanks and comments.
    [[nodiscard]] SlcSourceToken HeaderName();

    /// Returns the number of the line that is being read.
    [[nodiscard]] int Line() const { return m_line; }
    /// Sets the number of the current line. Call it only at the beginning of a line.
    void SetLine(int line) { m_line = line; }
    /// Removes the listener. For a copy that looks ahead.
    void BeSilent() { m_listener = nullptr; }

private:
    [[nodiscard]] SlcSourceToken TokenHere(std::size_t length) const;
    /// Skips blanks and comments. True if anything was skipped.
    [[nodiscard]] bool SkipBlanks();
    void SkipComment();
    /// Advances line and column past the joints before the current place.
    void CountJoints();
    void BeginLine(const char* at);
    [[nodiscard]] SlcSourceTokenKind Scan();
    [[nodiscard]] SlcSourceTokenKind ScanNumber();
    [[nodiscard]] SlcSourceTokenKind ScanQuoted();

    const char* m_begin;
    const char* m_next;
    const char* m_end;
    const char* m_lineBegin;
    const std::vector<std::size_t>* m_joints;
    std::size_t m_nextJoint = 0;
    int m_line = 1;
    bool m_startsLine = true;
    const Listener* m_listener;
};
