// The advice comes from the last few tokens and from what is open around them, not from the tables
// of the parser: what people mistake for the language is a matter of other languages.
//
//     int i = 3;        unexpected 'i': the language has no 'int', ..., write 'float'
//     if (x) y = 1;     unexpected 'y': a condition needs a comparison
//     i++;              unexpected '+': there is no '++', write '+= 1'
//
// Each `Hint` knows a family of such mistakes, and the first that recognizes its own speaks. What
// they ask of the past is followed token by token: open parentheses and braces with the indentation
// of their lines, and whether the condition at hand holds a comparison. Without warnings of level 2
// no texts are kept and no hints made.
//
// Tested by tests/frontend/SlcParseAdviceTest.cpp.

#include "frontend/SlcParseAdvice.h"

#include <array>
#include <string_view>
#include <utility>

#include "frontend/SlcLaterWords.h"
#include "frontend/SlcScanner.h"
#include "grammar.h"
#include "support/SlcDiagnostics.h"
#include "support/SlcSourcePosition.h"

namespace {

bool IsForeignType(std::string_view word)
{
    return word == "int" || word == "bool" || word == "double";
}

bool IsType(int token)
{
    return token == VOID || token == FLOAT || token == STRING || token == NORMAL ||
           token == VECTOR || token == POINT || token == COLOR || token == MATRIX;
}

bool IsDeclarationWord(int token)
{
    return IsType(token) || token == VARYING || token == UNIFORM || token == EXTERN ||
           token == OUTPUT;
}

bool IsShaderKind(int token)
{
    return token == LIGHT || token == SURFACE || token == VOLUME || token == DISPLACEMENT ||
           token == IMAGER;
}

/// A word of the language that is no name; the kinds of shaders are names too.
bool IsReserved(int token)
{
    return (IsDeclarationWord(token) || (token >= RETURN && token <= SHADOW)) &&
           !IsShaderKind(token);
}

bool IsComparison(int token)
{
    return token == '<' || token == '>' || token == LE || token == GE || token == EQ || token == NE;
}

bool EndsValue(int token)
{
    return token == ')' || token == ']' || token == IDENTIFIER || token == FLOAT_CONST ||
           token == INT_CONST || token == STRING_CONST;
}

int IndentOfLine()
{
    const std::string& line = SlcCurrentPosition().currentLine;
    const std::size_t first = line.find_first_not_of(" \t");
    return first == std::string::npos ? 0 : static_cast<int>(first);
}

/// What stands right behind the last token; a blank at the end of the line.
char NextChar()
{
    const SlcSourcePosition& position = SlcCurrentPosition();
    const auto column = static_cast<std::size_t>(position.column);
    return column < position.currentLine.size() ? position.currentLine[column] : ' ';
}

/// The token as a report names it.
std::string Named(int code, const std::string& text)
{
    constexpr std::size_t k_longest = 40;
    if (code == 0)
        return "end of the file";
    return "'" + (text.size() > k_longest ? text.substr(0, k_longest) + "..." : text) + "'";
}

}  // namespace

const SlcParseAdvice::Token& SlcParseAdvice::Before(std::size_t places) const
{
    static const Token none;
    return places < m_count && places < k_kept ? m_tokens[(m_count - 1 - places) % k_kept] : none;
}

int SlcParseAdvice::Next(SlcTokenValue& value, SlcTextRange& range)
{
    m_value = &value;
    const int token = ReadKept();
    const SlcSourcePosition& position = SlcCurrentPosition();
    const auto end = static_cast<std::uint32_t>(position.taken);
    range = {end - static_cast<std::uint32_t>(token == 0 ? 0 : position.tokenLength), end};
    return token;
}

int SlcParseAdvice::ReadKept()
{
    const Drops drops = std::exchange(m_drops, Drops::Nothing);
    if (drops == Drops::HeadOfFor)
        return ReadBehindHead();
    if (drops == Drops::Definition)
        return ReadToEnd();
    int token = Read();
    while (drops == Drops::Else && token == ELSE) {
        m_depth = m_braces.size();
        token = ReadToEnd();
        if (token == 0 || m_braces.size() < m_depth)
            break;
        token = Read();
    }
    return token;
}

/// A new beginning at the ";" of a loop's head would report the rest of the head again.
int SlcParseAdvice::ReadBehindHead()
{
    int token = Read();
    for (bool isInHead = true; isInHead && token != 0 && token != '{' && token != '}';
         token = Read())
        isInHead = m_parentheses.size() >= m_depth;
    return token;
}

int SlcParseAdvice::ReadToEnd()
{
    while (true) {
        const int token = Read();
        const bool isOutside = m_braces.size() <= m_depth;
        if (token == 0 || (isOutside && (token == '}' || (token == ';' && m_openParentheses == 0))))
            return token;
    }
}

int SlcParseAdvice::Read()
{
    const int code = SlcScanner::Next(*m_value);
    // The oldest token gives its place, and nobody asks for it on the way.
    Token& token = m_tokens[m_count % k_kept];
    token.code = code;
    token.line = SlcCurrentPosition().line;
    token.text.clear();
    token.opensDefinition = code == IDENTIFIER && SlcOpensLaterDefinition(SlcScanner::TokenText());
    if (AdviceIsShown() && code != 0)
        token.text = SlcScanner::TokenText();
    Follow(token);
    ++m_count;
    return code;
}

void SlcParseAdvice::Follow(const Token& token)
{
    m_openParentheses = m_parentheses.size();
    FollowCondition(token);
    FollowParenthesis(token);
    FollowBrace(token);
}

void SlcParseAdvice::FollowParenthesis(const Token& token)
{
    const bool isInHead = !m_parentheses.empty() && m_parentheses.back().token == FOR;
    if (token.code == '(') {
        m_parentheses.push_back({Before(0).code, Before(0).text});
    } else if (token.code == ')' && !m_parentheses.empty()) {
        m_called = m_parentheses.back().text;
        m_parentheses.pop_back();
    } else if (token.code == '{' || token.code == '}' || (token.code == ';' && !isInHead)) {
        m_parentheses.clear();
    }
}

void SlcParseAdvice::FollowBrace(const Token& token)
{
    if (token.code == '{') {
        m_braces.push_back({token.line, IndentOfLine()});
    } else if (token.code == '}') {
        m_lastClosing = token.line;
        m_lastClosed = m_braces.empty() ? Brace() : m_braces.back();
        if (m_braces.empty())
            return;
        // A brace that closes further out than it was opened hints at one that is missing inside.
        // Several in one line tell nothing by their indentation.
        const bool isFirst = NextChar() != '}' && IndentOfLine() < m_lastClosed.indent;
        if (isFirst && m_suspect.line == 0)
            m_suspect = m_lastClosed;
        m_braces.pop_back();
    }
}

void SlcParseAdvice::FollowCondition(const Token& token)
{
    const bool isEnd = token.code == ')' && m_parentheses.size() == m_conditionDepth + 1;
    const bool isOpen = m_condition == Condition::Open;
    m_strayComparison = m_comparison;
    // As it stands now, in front of the token: the parser refuses it before the rest is read.
    m_lacksComparison =
        !m_compared &&
        (m_condition == Condition::Closed ||
         (isOpen && (isEnd || token.code == AND || token.code == OR || token.code == ';' ||
                     m_parentheses.size() == m_conditionDepth)));
    if (m_condition == Condition::Closed)
        m_condition = Condition::None;

    if (token.code == ';' || token.code == '{' || token.code == '}') {
        const bool isHeadOfFor = token.code == ';' && !isOpen && !m_parentheses.empty() &&
                                 m_parentheses.back().token == FOR;
        m_condition = isHeadOfFor ? Condition::Open : Condition::None;
        m_conditionDepth = m_parentheses.size();
        m_compared = m_comparison = false;
    } else if (token.code == IF || token.code == WHILE) {
        m_condition = Condition::Open;
        m_conditionDepth = m_parentheses.size();
        m_compared = m_comparison = false;
    } else if (token.code == AND || token.code == OR) {
        m_compared = false;
    } else if (IsComparison(token.code)) {
        m_compared = true;
        m_comparison = m_condition == Condition::None;
    } else if (token.code == '?') {
        m_comparison = false;
    } else if (isEnd && isOpen) {
        m_condition = Condition::Closed;
    }
}

std::string SlcParseAdvice::Refused()
{
    if (!m_parentheses.empty() && m_parentheses.back().token == FOR) {
        m_drops = Drops::HeadOfFor;
        m_depth = m_parentheses.size();
    } else if ((Before(0).opensDefinition || Before(1).opensDefinition) && Before(0).code != ';' &&
               Before(0).code != '}') {
        m_drops = Drops::Definition;
        m_depth = m_braces.size() - (Before(0).code == '{' ? 1 : 0);
    }
    if (!AdviceIsShown())
        return {};
    const std::string hint = Hint();
    return "unexpected " + Named(Before(0).code, Before(0).text) + (hint.empty() ? "" : ": ") +
           hint;
}

std::string SlcParseAdvice::Hint() const
{
    constexpr std::array k_hints = {
        &SlcParseAdvice::HintOnLaterWords,  &SlcParseAdvice::HintOnTypes,
        &SlcParseAdvice::HintOnSigns,       &SlcParseAdvice::HintOnLoops,
        &SlcParseAdvice::HintOnConditions,  &SlcParseAdvice::HintOnBraces,
        &SlcParseAdvice::HintOnDefinitions, &SlcParseAdvice::HintOnStatements,
    };
    for (const auto hint : k_hints)
        if (std::string text = (this->*hint)(); !text.empty())
            return text;
    return {};
}

std::string SlcParseAdvice::HintOnLaterWords() const
{
    if ((Before(0).code == '-' && NextChar() == '>') ||
        (Before(0).code == '>' && Before(1).code == '-'))
        return "methods belong to a later revision of the language";
    for (const std::size_t places : {0, 1, 2})
        if (const auto advice = SlcAdviceOnLaterWord(Before(places).text);
            Before(places).code == IDENTIFIER && !advice.empty())
            return std::string(advice);
    if (Before(1).code == ')')
        return SlcAdviceOnLaterFunction(m_called);
    return {};
}

std::string SlcParseAdvice::HintOnTypes() const
{
    for (const std::size_t places : {0, 1})
        if (Before(places).code == IDENTIFIER && IsForeignType(Before(places).text))
            return "the language has no 'int', 'bool' or 'double', write 'float'";
    if (Before(0).code == INT_CONST && Before(1).code == '[' && IsType(Before(2).code))
        return "the length of an array is written behind its name, that of a result as '" +
               Before(0).text + ".0'";
    if (Before(0).code == FLOAT_CONST && Before(1).code == '[' && Before(2).code == IDENTIFIER)
        return "the length of an array is a whole number without a point";
    if (IsReserved(Before(0).code) && IsType(Before(1).code) && !IsType(Before(0).code))
        return "a word of the language is no name";
    return {};
}

std::string SlcParseAdvice::HintOnSigns() const
{
    const auto isTwice = [this](int sign) {
        return (Before(0).code == sign && (Before(1).code == sign || NextChar() == sign)) ||
               (sign == '-' && Before(1).code == sign && Before(2).code == sign);
    };
    if (isTwice('+'))
        return "there is no '++', write '+= 1'";
    if (isTwice('-'))
        return "there is no '--', write '-= 1'";
    if (Before(0).code == '>' && Before(1).code == '<')
        return "there is no '<>', write '!='";
    if (Before(0).code == '*' && Before(1).code == '*')
        return "there is no '**', call 'pow'";
    return {};
}

std::string SlcParseAdvice::HintOnLoops() const
{
    for (std::size_t places = 1; places + 1 < k_kept; ++places)
        if (Before(places + 1).code == FOR && Before(places).code == '(' &&
            IsDeclarationWord(Before(places - 1).code))
            return "a loop variable is declared in front of the loop";
    return {};
}

std::string SlcParseAdvice::HintOnConditions() const
{
    const int token = Before(0).code;
    if (m_lacksComparison || token == '?')
        return "a condition needs a comparison";
    if (token == AND || token == OR ||
        (m_strayComparison && (token == ';' || token == ')' || token == ',')))
        return "a comparison is no value, write '... ? 1 : 0'";
    return {};
}

std::string SlcParseAdvice::HintOnBraces() const
{
    const int token = Before(0).code;
    if ((token == ';' || token == '{') && m_openParentheses > 0 && m_drops == Drops::Nothing)
        return "a ')' is missing in front of it";
    const bool isShader = token == IDENTIFIER && IsShaderKind(Before(1).code);
    if (!m_braces.empty() && (token == 0 || isShader)) {
        const std::string brace = "the brace of line " + std::to_string(m_braces.back().line);
        const std::string suspect = m_suspect.line == 0 ? std::string()
                                                        : "; by the indentation, the one of line " +
                                                              std::to_string(m_suspect.line);
        return brace + (token == 0 ? " is never closed" : " is still open") + suspect;
    }
    if (token == ')' && m_openParentheses == 0)
        return "no '(' is open";
    if (token == '}' && m_lastClosed.line == 0)
        return "no brace is open";
    // Behind a body that ended too early stands no definition but a statement.
    for (const std::size_t places : {1, 2, 3})
        if (m_braces.empty() && Before(places).code == '}' &&
            (Before(places - 1).code == IDENTIFIER || IsReserved(Before(places - 1).code)) &&
            !IsDeclarationWord(Before(places - 1).code))
            return "the brace of line " + std::to_string(m_lastClosed.line) +
                   " is closed on line " + std::to_string(m_lastClosing) + " already";
    return {};
}

std::string SlcParseAdvice::HintOnDefinitions() const
{
    const int token = Before(0).code;
    if (m_braces.size() > (token == '{' ? 1U : 0U))
        return {};
    if (IsShaderKind(Before(1).code) && token != IDENTIFIER)
        return "a shader needs a name";
    if (IsDeclarationWord(token) && Before(1).code == ',')
        return "groups of formals are separated by ';'";
    if (Before(1).code == ')' && m_openParentheses == 0)
        return "a '{' is missing in front of it";
    return {};
}

std::string SlcParseAdvice::HintOnStatements() const
{
    const Token& token = Before(0);
    const Token& previous = Before(1);
    if (token.code == ';' && previous.code == RETURN)
        return "a 'return' needs a value";
    if (token.code == EQ && Before(2).code != '(')
        return "write '=' to assign";
    if (token.code == ELSE)
        return "there is no 'if' in front of it";
    if (previous.line < token.line && EndsValue(previous.code) && token.code != '}')
        return "a ';' may be missing at the end of line " + std::to_string(previous.line);
    if (token.code == IDENTIFIER && previous.code == IDENTIFIER)
        return "'" + previous.text + "' is no type";
    if (token.code != ')' && EndsValue(token.code) && EndsValue(previous.code))
        return "an operator or a ';' is missing in front of it";
    const int start = Before(2).code;
    if (token.code == ';' && previous.code == IDENTIFIER &&
        (start == ';' || start == '{' || start == '}'))
        return "a name alone is no statement";
    return {};
}
