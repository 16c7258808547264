#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "preprocessor/SlcSourceText.h"
#include "preprocessor/SlcSourceToken.h"

/// Cuts a source into preprocessing tokens, as C has them (C99 6.4), and passes over blanks and
/// comments. What is no token of C becomes one of kind `Other`, so that nothing is lost: shading
/// sources are not C.
///
/// A value: a copy looks ahead.
class SlcSourceLexer {
public:
    /// Reports at a place of the text.
    struct Listener {
        std::function<void(const SlcSourceToken& comment)> unfinishedComment;
        std::function<void(const SlcSourceToken& start)> commentInComment;
    };

    /// `text` must outlive the lexer and its tokens. Without a listener nothing is reported.
    explicit SlcSourceLexer(const SlcSourceText& text, const Listener* listener = nullptr);
    /// Reads a text in memory, which ends with a line break.
    SlcSourceLexer(const char* begin, const char* end);

    /// The next token. At the end of the text, that of kind `End` again and again.
    [[nodiscard]] SlcSourceToken Next();
    /// The name after `#include`, with its quotes or angle brackets, if the text continues with
    /// one. Otherwise a token of kind `Empty`, and nothing is consumed.
    [[nodiscard]] SlcSourceToken HeaderName();

    /// The line of what comes next.
    [[nodiscard]] int Line() const { return m_line; }
    /// Only at the beginning of a line.
    void SetLine(int line) { m_line = line; }
    /// Stops reporting, in a copy that looks ahead.
    void BeSilent() { m_listener = nullptr; }

private:
    [[nodiscard]] SlcSourceToken TokenHere(std::size_t length) const;
    /// True if something was passed over.
    [[nodiscard]] bool SkipBlanks();
    void SkipComment();
    /// Keeps line and column up with the joints that have been passed.
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
