#pragma once

#include <charconv>
#include <string>

/// Returns the shortest text that reads back to the same number.
[[nodiscard]] inline std::string SqxNumberText(float number)
{
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, number).ptr};
}
