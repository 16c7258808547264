#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

/// A float constant as both outputs write it: with seven digits.
[[nodiscard]] inline std::string SlcFloatText(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%e", value);
    return text;
}

/// What is left of `value` behind its text.
[[nodiscard]] inline double SlcValueOfFloatText(double value)
{
    constexpr double shortest = 1e7;  // whole numbers below it have at most seven digits
    if (std::trunc(value) == value && std::abs(value) < shortest)
        return value;
    return std::strtod(SlcFloatText(value).c_str(), nullptr);
}
