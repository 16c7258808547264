// The class of the first character selects the kind of token, and one loop reads each kind. Each
// text ends with a line break, so of all loops only that over a comment has to test for the end.
//
// Tested by tests/preprocessor.

#include "preprocessor/SlcSourceLexer.h"

#include <array>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace {

using enum SlcSourceTokenKind;

enum class CharacterClass : std::uint8_t { Other, Letter, Digit, Quote, Sign, LineBreak };

constexpr std::array<CharacterClass, 256> k_classes = [] {
    std::array<CharacterClass, 256> classes = {};
    const auto set = [&](std::string_view characters, CharacterClass of) {
        for (const char c : characters)
            classes[static_cast<unsigned char>(c)] = of;
    };
    // "$" is also a letter, as in most C compilers.
    set("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_$", CharacterClass::Letter);
    set("0123456789", CharacterClass::Digit);
    set("\"'", CharacterClass::Quote);
    set("[](){}.-+&*~!/%<>^|?:;=,#", CharacterClass::Sign);
    set("\n", CharacterClass::LineBreak);
    return classes;
}();

// Signs of more than one character, longer ones first.
constexpr std::array<std::string_view, 27> k_longSigns = {
    "%:%:", "<<=", ">>=", "...", "->", "++", "--", "<<", ">>", "<=", ">=", "==", "!=", "&&",
    "||",   "*=",  "/=",  "%=",  "+=", "-=", "&=", "^=", "|=", "##", "%:", "<:", ":>",
};

CharacterClass ClassOf(char c)
{
    return k_classes[static_cast<unsigned char>(c)];
}

bool IsNamePart(char c)
{
    return ClassOf(c) == CharacterClass::Letter || ClassOf(c) == CharacterClass::Digit;
}

std::size_t SignLength(const char* at)
{
    if (ClassOf(at[1]) != CharacterClass::Sign)
        return 1;
    for (const std::string_view sign : k_longSigns)
        if (std::strncmp(at, sign.data(), sign.size()) == 0)
            return sign.size();
    return 1;
}

const std::vector<std::size_t> k_noJoints;

}  // namespace

SlcSourceLexer::SlcSourceLexer(const SlcSourceText& text, const Listener* listener)
    : m_begin(text.Begin()),
      m_next(text.Begin()),
      m_end(text.End()),
      m_lineBegin(text.Begin()),
      m_joints(&text.Joints()),
      m_listener(listener)
{
}

SlcSourceLexer::SlcSourceLexer(const char* begin, const char* end)
    : m_begin(begin),
      m_next(begin),
      m_end(end),
      m_lineBegin(begin),
      m_joints(&k_noJoints),
      m_listener(nullptr)
{
}

SlcSourceToken SlcSourceLexer::TokenHere(std::size_t length) const
{
    SlcSourceToken token;
    token.text = {m_next, length};
    token.at = m_next;
    token.line = m_line;
    token.column = static_cast<int>(m_next - m_lineBegin) + 1;
    token.startsLine = m_startsLine;
    return token;
}

SlcSourceToken SlcSourceLexer::Next()
{
    const bool spaceBefore = SkipBlanks();
    CountJoints();
    SlcSourceToken token = TokenHere(0);
    token.spaceBefore = spaceBefore;
    token.kind = Scan();
    token.text = {token.at, static_cast<std::size_t>(m_next - token.at)};
    m_startsLine = token.kind == NewLine;
    return token;
}

SlcSourceToken SlcSourceLexer::HeaderName()
{
    static_cast<void>(SkipBlanks());
    CountJoints();
    SlcSourceToken name = TokenHere(0);
    name.kind = Empty;
    const char close = *m_next == '<' ? '>' : *m_next;
    if (close != '>' && close != '"')
        return name;
    const char* end = m_next + 1;
    while (*end != close && *end != '\n')
        ++end;
    if (*end == '\n')
        return name;
    m_next = end + 1;
    name.kind = Text;
    name.text = {name.at, static_cast<std::size_t>(m_next - name.at)};
    return name;
}

void SlcSourceLexer::BeginLine(const char* at)
{
    if (m_line < std::numeric_limits<int>::max())
        ++m_line;
    m_lineBegin = at;
}

void SlcSourceLexer::CountJoints()
{
    const auto place = static_cast<std::size_t>(m_next - m_begin);
    for (; m_nextJoint < m_joints->size() && (*m_joints)[m_nextJoint] <= place; ++m_nextJoint)
        BeginLine(m_begin + (*m_joints)[m_nextJoint]);
}

bool SlcSourceLexer::SkipBlanks()
{
    const char* const begin = m_next;
    for (;;) {
        const char c = *m_next;
        if (c == ' ' || c == '\t' || c == '\v' || c == '\f')
            ++m_next;
        else if (c == '/' && m_next[1] == '*')
            SkipComment();
        else if (c == '/' && m_next[1] == '/')
            m_next = static_cast<const char*>(
                std::memchr(m_next, '\n', static_cast<std::size_t>(m_end - m_next)));
        else
            return m_next != begin;
    }
}

void SlcSourceLexer::SkipComment()
{
    CountJoints();
    const SlcSourceToken start = TokenHere(2);
    const Listener* listener = m_listener;  // null after the first report on this comment
    for (m_next += 2; m_next != m_end; ++m_next) {
        if (*m_next == '\n') {
            CountJoints();
            BeginLine(m_next + 1);
        } else if (*m_next == '*' && m_next[1] == '/') {
            m_next += 2;
            return;
        } else if (*m_next == '/' && m_next[1] == '*' && m_next[2] != '/' && listener) {
            CountJoints();
            std::exchange(listener, nullptr)->commentInComment(TokenHere(2));
        }
    }
    if (m_listener)
        m_listener->unfinishedComment(start);
}

SlcSourceTokenKind SlcSourceLexer::Scan()
{
    if (m_next == m_end)
        return End;
    switch (ClassOf(*m_next)) {
    case CharacterClass::LineBreak:
        BeginLine(++m_next);
        return NewLine;
    case CharacterClass::Letter:
        while (IsNamePart(*++m_next)) {
        }
        return Name;
    case CharacterClass::Digit:
        return ScanNumber();
    case CharacterClass::Quote:
        return ScanQuoted();
    case CharacterClass::Sign:
        if (*m_next == '.' && ClassOf(m_next[1]) == CharacterClass::Digit)
            return ScanNumber();
        m_next += SignLength(m_next);
        return Sign;
    case CharacterClass::Other:
        break;
    }
    ++m_next;
    return Other;
}

SlcSourceTokenKind SlcSourceLexer::ScanNumber()
{
    constexpr std::string_view exponents = "eEpP";
    ++m_next;
    for (;; ++m_next) {
        const bool isSign = (*m_next == '+' || *m_next == '-') &&
                            exponents.find(m_next[-1]) != std::string_view::npos;
        if (!IsNamePart(*m_next) && *m_next != '.' && !isSign)
            return Number;
    }
}

SlcSourceTokenKind SlcSourceLexer::ScanQuoted()
{
    const char quote = *m_next++;
    for (; *m_next != '\n'; ++m_next) {
        if (*m_next == quote) {
            ++m_next;
            return quote == '"' ? Text : Character;
        }
        if (*m_next == '\\' && m_next[1] != '\n')
            ++m_next;
    }
    return Other;
}
