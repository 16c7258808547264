#pragma once

#include <charconv>
#include <cmath>
#include <iterator>
#include <string>

/// Formats a float constant as both outputs write it: with seven digits, as "%e" of printf() does.
[[nodiscard]] inline std::string SlcFloatText(double value)
{
    constexpr int digits = 6;  // after the decimal point
    char text[32];
    char* const end =
        std::to_chars(text, std::end(text), value, std::chars_format::scientific, digits).ptr;
    return {text, end};
}

/// Returns the value that the run time reads back from the text of `value`, before it converts it
/// to single precision; compile-time evaluation must use it too. Whole numbers of up to seven
/// digits are unchanged.
[[nodiscard]] inline double SlcValueOfFloatText(double value)
{
    constexpr double shortest = 1e7;  // whole numbers below it have at most seven digits
    if (std::trunc(value) == value && std::abs(value) < shortest)
        return value;
    const std::string text = SlcFloatText(value);
    double left = value;
    std::from_chars(text.data(), text.data() + text.size(), left);
    return left;
}
