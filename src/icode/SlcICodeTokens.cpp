#include "icode/SlcICodeTokens.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace {

bool IsDigit(char c)
{
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

/// Returns the length of the number at the start of `text`, including its sign; 0 if there is none.
std::size_t NumberLength(std::string_view text)
{
    const std::size_t sign = text.starts_with('-') ? 1 : 0;
    if (text.size() <= sign || !IsDigit(text[sign]))
        return 0;
    double value = 0;
    return static_cast<std::size_t>(
        std::from_chars(text.data(), text.data() + text.size(), value).ptr - text.data());
}

/// Returns the length of the token at the start of `text`, which must not begin with a blank.
std::size_t TokenLength(std::string_view text)
{
    if (text.front() == '"') {
        std::size_t end = 1;
        while (end < text.size() && text[end] != '"')
            end += text[end] == '\\' ? 2 : 1;
        return std::min(end + 1, text.size());
    }
    if (const std::size_t length = NumberLength(text))
        return length;
    const std::size_t hash = text.front() == '#' ? 1 : 0;
    const std::size_t sign = hash + (hash != 0 && text.substr(1).starts_with('-') ? 1 : 0);
    const auto end = std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(sign), text.end(),
                                      SlcIsICodeWordChar);
    if (const auto length = static_cast<std::size_t>(end - text.begin()); length > sign)
        return length;
    for (const std::string_view sign2 : {"<-", "<=", ">=", "==", "!="})
        if (text.starts_with(sign2))
            return 2;
    return 1;
}

}  // namespace

bool SlcIsICodeWordChar(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool SlcIsICodeNumber(std::string_view token)
{
    return !token.empty() && NumberLength(token) == token.size();
}

std::vector<std::string> SlcSplitICodeText(std::string_view text)
{
    std::vector<std::string> tokens;
    while (true) {
        const auto begin = std::find_if(text.begin(), text.end(), [](char c) {
            return std::isspace(static_cast<unsigned char>(c)) == 0;
        });
        text.remove_prefix(static_cast<std::size_t>(begin - text.begin()));
        if (text.empty())
            return tokens;
        const std::size_t length = TokenLength(text);
        tokens.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
    }
}
