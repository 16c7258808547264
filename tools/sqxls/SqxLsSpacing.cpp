// Where blanks are a matter of taste, the source's choice between none and one stays: after '.';
// before '.', if a word or a closing bracket precedes it; between a keyword that begins no
// statement, such as a type, or a string, which names a space, and the parenthesis after it; and
// between a unary sign and another sign. Before a comment, blanks are added but never removed.
//
// Tested by tests/sqxls/SqxLsFormatTest.cpp.

#include "sqxls/SqxLsSpacing.h"

#include <algorithm>
#include <string_view>

#include "frontend/SlcScanner.h"

namespace {

using Kind = SqxLsToken::Kind;

/// Keywords of statements: a blank separates them from a parenthesis, and '+' or '-' after them is
/// unary.
constexpr std::string_view k_statements[] = {"if",         "else",  "for",      "while",
                                             "return",     "break", "continue", "illuminance",
                                             "illuminate", "solar"};

bool IsOneOf(std::string_view text, std::string_view signs)
{
    return text.size() == 1 && signs.find(text) != std::string_view::npos;
}

bool IsStatementWord(const SqxLsToken& token)
{
    return std::find(std::begin(k_statements), std::end(k_statements), token.text) !=
           std::end(k_statements);
}

bool IsType(const SqxLsToken& token)
{
    const auto keywords = SlcKeywords();
    return std::any_of(keywords.begin(), keywords.end(), [&](const SlcKeyword& keyword) {
        return keyword.kind == SlcWordKind::Type && keyword.word == token.text;
    });
}

bool IsWord(const SqxLsToken& token)
{
    return token.kind == Kind::Word || token.kind == Kind::Keyword;
}

}  // namespace

SqxLsSpacing::SqxLsSpacing(const std::vector<SqxLsToken>& tokens,
                           const std::vector<std::size_t>& partners)
    : m_tokens(tokens),
      m_isListBrace(tokens.size(), false)
{
    for (std::size_t i = 1; i < tokens.size(); ++i)
        if (tokens[i].text == "{" && IsOneOf(tokens[i - 1].text, "=,({")) {
            const bool isInList = tokens[i - 1].text != "{" || m_isListBrace[i - 1];
            m_isListBrace[i] = isInList;
            if (partners[i] != i)
                m_isListBrace[partners[i]] = isInList;
        }
}

bool SqxLsSpacing::IsUnary(std::size_t i) const
{
    if (m_tokens[i].text == "!")
        return true;
    if (m_tokens[i].text != "-" && m_tokens[i].text != "+")
        return false;
    if (i == 0)
        return true;
    const SqxLsToken& before = m_tokens[i - 1];
    switch (before.kind) {
    case Kind::Word:
    case Kind::Number:
        return false;
    case Kind::Sign:
        return !IsOneOf(before.text, ")]");
    case Kind::Keyword:  // a shader type may be the name of a variable
        return IsStatementWord(before) || IsType(before);
    case Kind::Text:  // the space of a cast
    case Kind::Comment:
    case Kind::Directive:
    case Kind::Broken:
        break;
    }
    return true;
}

std::size_t SqxLsSpacing::BeforeParenthesis(std::size_t i, std::size_t now) const
{
    const SqxLsToken& token = m_tokens[i];
    if (token.kind == Kind::Word || IsOneOf(token.text, "]"))
        return 0;
    const bool isTaste = token.kind == Kind::Keyword || token.kind == Kind::Text;
    if (isTaste && !IsStatementWord(token))
        return std::min<std::size_t>(now, 1);
    return IsUnary(i) ? 0 : 1;
}

std::size_t SqxLsSpacing::After(std::size_t i, std::size_t now) const
{
    const SqxLsToken& token = m_tokens[i];
    const SqxLsToken& next = m_tokens[i + 1];
    if (next.kind == Kind::Comment)
        return std::max<std::size_t>(now, 1);
    if (IsOneOf(token.text, "(["))
        return 0;
    if (IsOneOf(next.text, ";,)]"))
        return 0;
    if (token.text == "{")
        return m_isListBrace[i] || next.text == "}" ? 0 : 1;
    if (next.text == "}")
        return m_isListBrace[i + 1] ? 0 : 1;
    if (token.text == "." || next.text == ".")
        return IsWord(token) || token.text == ")" || token.text == "]" || token.text == "."
                   ? std::min<std::size_t>(now, 1)
                   : 1;
    if (next.text == "[")
        return IsWord(token) || IsOneOf(token.text, "])") ? 0 : 1;
    if (token.kind == Kind::Sign && IsUnary(i))
        return next.kind == Kind::Sign && next.text != "(" ? std::min<std::size_t>(now, 1) : 0;
    if (next.text == "(")
        return BeforeParenthesis(i, now);
    return 1;
}
