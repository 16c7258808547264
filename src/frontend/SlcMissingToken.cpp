// Each candidate for the missing token is inserted before the rejected token and the rest of the
// line. The parser's own tables determine how many of these tokens would be accepted:
//
//     x = mix(a b, c);        rejected: b
//         , b , c ) ;         all accepted
//         ) b                 b is rejected: the rule that reports a missing ";" is not used here
//
// A candidate is rated by the number of tokens up to the first one that is rejected; later tokens
// do not count. So the choice follows from the grammar; only among equally good candidates does it
// matter whether the rejected token starts a line.
//
// Tested by tests/frontend/SlcParseAdviceTest.cpp, and with tokens removed from the examples by
// tests/compiler/MissingTokensTest.cpp.

#include "frontend/SlcMissingToken.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <span>

#include "frontend/SlcScanner.h"
#include "grammar.h"

namespace {

using Candidates = std::array<int, 7>;

// Of several equally good candidates the first is used. In a declaration, ',' before another name
// and ';' before a statement may be equally good; at the start of a line, ';' is more likely.
constexpr Candidates k_withinLine = {')', ',', ';', '(', '{', '}', ']'};
constexpr Candidates k_atLineStart = {')', ';', ',', '(', '{', '}', ']'};

constexpr std::string_view k_signs = "-{<>=+*/.^()}!?:;,[]";

bool IsWordPart(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

int SignOfTwo(std::string_view text)
{
    struct Sign {
        std::string_view text;
        int token;
    };
    constexpr Sign k_pairs[] = {{"<=", LE},         {">=", GE},         {"==", EQ},
                                {"!=", NE},         {"||", OR},         {"&&", AND},
                                {"+=", ADD_ASSIGN}, {"-=", SUB_ASSIGN}, {"*=", MUL_ASSIGN},
                                {"/=", DIV_ASSIGN}};
    for (const Sign& sign : k_pairs)
        if (text.starts_with(sign.text))
            return sign.token;
    return 0;
}

/// Returns the length of the number at the start of the text; 0 if there is none.
std::size_t NumberLength(std::string_view text)
{
    const std::size_t digit = text.starts_with('.') ? 1 : 0;
    if (digit == text.size() || std::isdigit(static_cast<unsigned char>(text[digit])) == 0)
        return 0;
    double value = 0;
    return static_cast<std::size_t>(
        std::from_chars(text.data(), text.data() + text.size(), value).ptr - text.data());
}

/// Returns the length of the string literal at the start of the text; 0 if it is not closed.
std::size_t StringLength(std::string_view text)
{
    std::size_t end = 1;
    while (end < text.size() && text[end] != '"')
        end += text[end] == '\\' ? 2 : 1;
    return end < text.size() ? end + 1 : 0;
}

/// Returns the first token of a text, which must not be empty or begin with a blank, and sets
/// `length` to its length. Returns 0 if the text begins with no valid token.
int TokenOf(std::string_view text, std::size_t& length)
{
    length = NumberLength(text);
    if (length != 0) {
        const bool isWhole = text.substr(0, length).find_first_of(".eE") == std::string_view::npos;
        return isWhole ? INT_CONST : FLOAT_CONST;
    }
    length = 1;
    if (IsWordPart(text[0])) {
        while (length < text.size() && IsWordPart(text[length]))
            ++length;
        return SlcKeywordToken(text.substr(0, length));
    }
    if (text[0] == '"') {
        length = StringLength(text);
        return length == 0 ? 0 : STRING_CONST;
    }
    if (const int sign = SignOfTwo(text); sign != 0) {
        length = 2;
        return sign;
    }
    return k_signs.find(text[0]) == std::string_view::npos ? 0 : text[0];
}

}  // namespace

std::vector<int> SlcTokensOfLine(std::string_view text, std::size_t most)
{
    std::vector<int> tokens;
    while (tokens.size() < most) {
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r"), text.size()));
        if (text.empty() || text.starts_with("//") || text.starts_with("/*"))
            break;
        std::size_t length = 0;
        const int token = TokenOf(text, length);
        if (token == 0)
            break;
        tokens.push_back(token);
        text.remove_prefix(length);
    }
    return tokens;
}

int SlcMissingToken(const SlcParserTables& tables, std::span<const std::int16_t> states,
                    const std::vector<int>& following, bool startsLine)
{
    int best = 0;
    std::size_t most = 1;
    std::vector<int> tried = {0};
    tried.insert(tried.end(), following.begin(), following.end());
    for (const int candidate : startsLine ? k_atLineStart : k_withinLine) {
        tried.front() = candidate;
        const std::size_t taken = tables.CountAccepted(states, tried);
        if (taken > most) {
            most = taken;
            best = candidate;
        }
    }
    if (best == 0 || most == tried.size())
        return best;
    // If the source parses further without the rejected token, that token is the mistake.
    const std::size_t without =
        tables.CountAccepted(states, std::span<const int>(following).subspan(1));
    return without + 2 > most ? 0 : best;
}
