// The name of a space as a part of a C++ identifier: "my-space" becomes MATRIX_my_2d_space. Two
// names may collide; SlcGenCCode rejects a shader that uses both.

#include "backends/SlcSpaceName.h"

#include <cctype>

std::string SlcNameAsCId(std::string_view text)
{
    constexpr const char* digits = "0123456789abcdef";
    std::string name;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        const bool stays = code < 128 && (std::isalnum(code) || c == '_');
        if (stays)
            name += c;
        else
            name.append({'_', digits[code / 16], digits[code % 16], '_'});
    }
    return name;
}

std::string SlcMatrixIndexName(const std::string& literal)
{
    return "MATRIX_" + SlcNameAsCId(literal.substr(1, literal.size() - 2));
}
