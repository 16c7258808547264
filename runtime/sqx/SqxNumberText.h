#pragma once

#include <charconv>
#include <string>

/// The shortest text that gives the number again.
[[nodiscard]] inline std::string SqxNumberText(float number)
{
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, number).ptr};
}
