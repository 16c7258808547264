// Features that work on the source as it is written, such as formatting and folding, need comments
// and unexpanded macros. The compiler's scanner discards comments, so these features use a separate
// scanner. A byte that begins no token becomes a `Broken` token; a source with it is not formatted.
//
// Tested by tests/sqxls/SqxLsFormatTest.cpp.

#include "sqxls/SqxLsTokens.h"

#include <algorithm>
#include <cctype>

#include "frontend/SlcScanner.h"

namespace {

using Kind = SqxLsToken::Kind;

constexpr std::string_view k_twoSigns[] = {"<=", ">=", "==", "!=", "||",
                                           "&&", "+=", "-=", "*=", "/="};
constexpr std::string_view k_signs = "<>=+-*/.^(){}!?:;,[]";

bool IsDigit(char c)
{
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

class Scanner {
public:
    explicit Scanner(std::string_view source) : m_source(source) {}

    std::vector<SqxLsToken> Run()
    {
        std::vector<SqxLsToken> tokens;
        if (m_source.starts_with("\xEF\xBB\xBF"))
            m_at = 3;
        while (SkipBlanks()) {
            const std::size_t begin = m_at;
            const Kind kind = Scan();
            tokens.push_back({kind, {begin, m_at}, m_source.substr(begin, m_at - begin)});
            if (kind != Kind::Comment)  // a comment is a blank to the preprocessor
                m_startsLine = false;
        }
        return tokens;
    }

private:
    [[nodiscard]] char Peek(std::size_t ahead = 0) const
    {
        return m_at + ahead < m_source.size() ? m_source[m_at + ahead] : '\0';
    }

    bool SkipBlanks()
    {
        for (; m_at < m_source.size(); ++m_at) {
            if (m_source[m_at] == '\n')
                m_startsLine = true;
            else if (std::isspace(static_cast<unsigned char>(m_source[m_at])) == 0)
                return true;
        }
        return false;
    }

    Kind Scan()
    {
        const char c = Peek();
        if (c == '#' && m_startsLine)
            return TakeLine(Kind::Directive);
        if (c == '/' && Peek(1) == '/')
            return TakeLine(Kind::Comment);
        if (c == '/' && Peek(1) == '*')
            return TakeComment();
        if (c == '"')
            return TakeText();
        if (IsDigit(c) || (c == '.' && IsDigit(Peek(1))))
            return TakeNumber();
        if (SqxLsIsWordByte(c))
            return TakeWord();
        return TakeSign();
    }

    /// Reads to the end of the line. A line that ends in a backslash continues on the next line; so
    /// does a directive with a comment that extends to the next line.
    Kind TakeLine(Kind kind)
    {
        for (; m_at < m_source.size() && m_source[m_at] != '\n'; ++m_at) {
            if (kind == Kind::Directive && m_source.substr(m_at, 2) == "/*") {
                if (TakeComment() == Kind::Broken)
                    return Kind::Broken;
                --m_at;
            }
            if (m_source[m_at] != '\\')
                continue;
            const std::size_t end = m_source.find_first_not_of(" \t\v\f\r", m_at + 1);
            if (end != std::string_view::npos && m_source[end] == '\n')
                m_at = end;
        }
        while (std::isspace(static_cast<unsigned char>(m_source[m_at - 1])) != 0)
            --m_at;
        return kind;
    }

    Kind TakeComment()
    {
        const std::size_t end = m_source.find("*/", m_at + 2);
        m_at = end == std::string_view::npos ? m_source.size() : end + 2;
        return end == std::string_view::npos ? Kind::Broken : Kind::Comment;
    }

    Kind TakeText()
    {
        for (++m_at; m_at < m_source.size(); ++m_at) {
            if (m_source[m_at] == '"') {
                ++m_at;
                return Kind::Text;
            }
            if (m_source[m_at] == '\\' && m_at + 1 < m_source.size())
                ++m_at;
        }
        return Kind::Broken;
    }

    Kind TakeNumber()
    {
        TakeDigits();
        if (Peek() == '.')
            ++m_at;
        TakeDigits();
        const std::size_t sign = Peek(1) == '+' || Peek(1) == '-' ? 1 : 0;
        if ((Peek() == 'e' || Peek() == 'E') && IsDigit(Peek(1 + sign))) {
            m_at += 1 + sign;
            TakeDigits();
        }
        return Kind::Number;
    }

    void TakeDigits()
    {
        while (IsDigit(Peek()))
            ++m_at;
    }

    Kind TakeWord()
    {
        const std::size_t begin = m_at;
        while (SqxLsIsWordByte(Peek()))
            ++m_at;
        const std::string_view word = m_source.substr(begin, m_at - begin);
        const auto keywords = SlcKeywords();
        return std::any_of(keywords.begin(), keywords.end(),
                           [&](const SlcKeyword& keyword) { return keyword.word == word; })
                   ? Kind::Keyword
                   : Kind::Word;
    }

    Kind TakeSign()
    {
        const std::string_view two = m_source.substr(m_at, 2);
        const bool isLong =
            std::find(std::begin(k_twoSigns), std::end(k_twoSigns), two) != std::end(k_twoSigns);
        const bool isSign = k_signs.find(Peek()) != std::string_view::npos;
        m_at += isLong ? 2 : 1;
        return isLong || isSign ? Kind::Sign : Kind::Broken;
    }

    std::string_view m_source;
    std::size_t m_at = 0;
    bool m_startsLine = true;
};

}  // namespace

std::vector<SqxLsToken> SqxLsTokensOf(std::string_view source)
{
    return Scanner(source).Run();
}

std::vector<std::size_t> SqxLsPartnersOf(const std::vector<SqxLsToken>& tokens)
{
    std::vector<std::size_t> partners(tokens.size());
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        partners[i] = i;
        if (tokens[i].kind != Kind::Sign)
            continue;
        constexpr std::string_view k_opening = "([{";
        constexpr std::string_view k_closing = ")]}";
        const std::size_t closing = k_closing.find(tokens[i].text);
        if (k_opening.find(tokens[i].text) != std::string_view::npos)
            open.push_back(i);
        if (closing == std::string_view::npos)
            continue;
        // At a closing brace, brackets still open in its block get no partner: a missing
        // parenthesis is more common than a missing brace.
        while (closing == 2 && !open.empty() && tokens[open.back()].text != "{")
            open.pop_back();
        if (open.empty() || tokens[open.back()].text != k_opening.substr(closing, 1))
            continue;
        partners[i] = open.back();
        partners[open.back()] = i;
        open.pop_back();
    }
    return partners;
}
