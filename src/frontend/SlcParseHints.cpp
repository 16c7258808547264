// Guesses the mistake that made the parser reject a token. Most mistakes come from the habits of
// other languages, and the last few tokens identify them:
//
//     int i = 3;        unexpected 'i': the language has no 'int', ..., write 'float'
//     if (x) y = 1;     unexpected 'y': a condition needs a comparison
//     i++;              unexpected '+': there is no '++', write '+= 1'
//
// Each `HintOn` function handles one family of mistakes; the first function that recognizes one
// determines the advice.
// A missing separator or bracket is found with the parser's tables (SlcMissingToken.cpp).
//
// Tested by tests/frontend/SlcParseAdviceTest.cpp.

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/SlcLaterWords.h"
#include "frontend/SlcMissingToken.h"
#include "frontend/SlcParseAdvice.h"
#include "frontend/SlcTokenFamilies.h"
#include "grammar.h"
#include "support/SlcSourcePosition.h"

using namespace SlcTokens;

namespace {

bool IsForeignType(std::string_view word)
{
    return word == "int" || word == "bool" || word == "double";
}

bool IsShaderKind(int token)
{
    return token == LIGHT || token == SURFACE || token == VOLUME || token == DISPLACEMENT ||
           token == IMAGER;
}

/// True for a keyword that cannot be a name; the keywords for kinds of shaders can.
bool IsReserved(int token)
{
    return (IsDeclarationWord(token) || (token >= RETURN && token <= SHADOW)) &&
           !IsShaderKind(token);
}

bool EndsValue(int token)
{
    return token == ')' || token == ']' || token == IDENTIFIER || token == FLOAT_CONST ||
           token == INT_CONST || token == STRING_CONST;
}

}  // namespace

std::string SlcParseAdvice::Hint(const SlcParserTables& tables) const
{
    constexpr std::array k_before = {
        &SlcParseAdvice::HintOnLaterWords, &SlcParseAdvice::HintOnTypes,
        &SlcParseAdvice::HintOnSigns,      &SlcParseAdvice::HintOnLoops,
        &SlcParseAdvice::HintOnConditions, &SlcParseAdvice::HintOnBraces,
    };
    constexpr std::array k_after = {
        &SlcParseAdvice::HintOnDefinitions,
        &SlcParseAdvice::HintOnStatements,
    };
    for (const auto hint : k_before)
        if (std::string text = (this->*hint)(); !text.empty())
            return text;
    if (std::string text = HintOnMissing(tables); !text.empty())
        return text;
    for (const auto hint : k_after)
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
        return "the length of an array is written after its name, that of a result as '" +
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
            return "a loop variable is declared before the loop";
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
    // If a body ended too early, a statement follows it instead of a definition.
    for (const std::size_t places : {1, 2, 3})
        if (m_braces.empty() && Before(places).code == '}' &&
            (Before(places - 1).code == IDENTIFIER || IsReserved(Before(places - 1).code)) &&
            !IsDeclarationWord(Before(places - 1).code))
            return "the brace of line " + std::to_string(m_lastClosed.line) +
                   " is closed on line " + std::to_string(m_lastClosing) + " already";
    return {};
}

int SlcParseAdvice::MissingToken(const SlcParserTables& tables) const
{
    constexpr std::size_t k_most = 12;
    const SlcSourcePosition& position = SlcCurrentPosition();
    const std::string_view line = position.currentLine;
    const auto column = std::min(static_cast<std::size_t>(position.column), line.size());
    std::vector<int> following = SlcTokensOfLine(line.substr(column), k_most);
    following.insert(following.begin(), Before(0).code);
    return SlcMissingToken(tables, m_states, following, Before(1).line < Before(0).line);
}

std::string SlcParseAdvice::Missing(const SlcParserTables& tables) const
{
    if (!m_isShown)
        return {};
    const int missing = MissingToken(tables);
    if (missing == 0 || missing == ';')
        return {};
    return AdviceWith(std::string("a '") + static_cast<char>(missing) + "' is missing before it");
}

std::string SlcParseAdvice::HintOnMissing(const SlcParserTables& tables) const
{
    const int missing = MissingToken(tables);
    if (missing == ';' && Before(1).line < Before(0).line)
        return "a ';' may be missing at the end of line " + std::to_string(Before(1).line);
    if (missing != 0)
        return std::string("a '") + static_cast<char>(missing) + "' is missing before it";
    const bool endsPart = Before(0).code == ';' || Before(0).code == '{';
    return endsPart && m_openParentheses > 0 && m_drops != Drops::HeadOfFor
               ? "a ')' is missing before it"
               : std::string();
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
        return "there is no 'if' before it";
    if (previous.line < token.line && EndsValue(previous.code) && token.code != '}')
        return "a ';' may be missing at the end of line " + std::to_string(previous.line);
    if (token.code == IDENTIFIER && previous.code == IDENTIFIER)
        return "'" + previous.text + "' is no type";
    if (token.code != ')' && EndsValue(token.code) && EndsValue(previous.code))
        return "an operator or a ';' is missing before it";
    const int start = Before(2).code;
    if (token.code == ';' && previous.code == IDENTIFIER &&
        (start == ';' || start == '{' || start == '}'))
        return "a name alone is no statement";
    return {};
}
