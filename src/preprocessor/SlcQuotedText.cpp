#include "preprocessor/SlcQuotedText.h"

std::string SlcEscaped(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        if (c == '"' || c == '\\')
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

std::string SlcQuoted(std::string_view text)
{
    return '"' + SlcEscaped(text) + '"';
}

std::string SlcUnquoted(std::string_view text)
{
    std::string plain;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        if (text[i] == '\\' && i + 2 < text.size())
            ++i;
        plain += text[i];
    }
    return plain;
}
