#pragma once

#include <charconv>
#include <cmath>
#include <iterator>
#include <string>

/// A float constant as both outputs write it: with seven digits, as "%e" of printf() writes them.
[[nodiscard]] inline std::string SlcFloatText(double value)
{
    constexpr int digits = 6;  // behind the point
    char text[32];
    char* const end =
        std::to_chars(text, std::end(text), value, std::chars_format::scientific, digits).ptr;
    return {text, end};
}

/// What is left of `value` behind its text: for who computes with a constant that the run time will
/// read. Whole numbers of up to seven digits stay what they are.
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
