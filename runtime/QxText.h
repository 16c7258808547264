#pragma once

#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "QxValues.h"

/// One argument of `format` or `printf`, with its type.
struct QxTextArgument {
    enum Type { Float, Triple, Matrix, String };

    Type type;
    const void* value;  // float*, three floats, QxMatrix44*, or a const char* const*
};

namespace qxtext {

inline std::string Number(float value)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%g", static_cast<double>(value));
    return buffer;
}

/// The whole part, with all its digits.
inline std::string WholeNumber(float value)
{
    char buffer[64];
    // The sum makes a whole number of minus zero.
    std::snprintf(buffer, sizeof buffer, "%.0f", std::trunc(static_cast<double>(value)) + 0.0);
    return buffer;
}

inline std::string Numbers(const void* values, int count, std::string (*write)(float))
{
    const float* numbers = static_cast<const float*>(values);
    std::string text = write(numbers[0]);
    for (int i = 1; i < count; ++i)
        text += ' ' + write(numbers[i]);
    return text;
}

inline std::string Value(const QxTextArgument& argument, bool whole)
{
    const auto number = whole ? WholeNumber : Number;
    switch (argument.type) {
    case QxTextArgument::Float:
        return Numbers(argument.value, 1, number);
    case QxTextArgument::Triple:
        return Numbers(argument.value, 3, number);
    case QxTextArgument::Matrix:
        return Numbers(argument.value, 16, number);
    case QxTextArgument::String:
        break;
    }
    const char* text = *static_cast<const char* const*>(argument.value);
    return text ? text : "";
}

}  // namespace qxtext

/// The pattern with each of %f, %d, %p, %c, %m and %s replaced by the next argument, which is
/// written by its own type, and by %d without fractions; %% is a percent sign. What has no argument left stays as it is.
inline std::string QxFormat(const char* pattern, const QxTextArgument* arguments, int count)
{
    std::string text;
    int next = 0;
    for (const char* c = pattern; *c; ++c) {
        if (*c != '%' || c[1] == '\0') {
            text += *c;
        } else if (c[1] == '%') {
            text += *++c;
        } else if (std::string("fdpcms").find(c[1]) != std::string::npos && next < count) {
            text += qxtext::Value(arguments[next++], c[1] == 'd');
            ++c;
        } else {
            text += *c;
        }
    }
    return text;
}

/// The letters of the conversions in a pattern, in order.
inline std::string QxFormatTypes(const char* pattern)
{
    std::string types;
    for (const char* c = pattern; *c; ++c) {
        if (*c != '%' || c[1] == '\0')
            continue;
        ++c;
        if (std::strchr("fdpcms", *c))
            types += *c;
        else if (*c != '%')
            --c;
    }
    return types;
}

/// What a shader reports of an index outside of an array.
inline std::string QxBadArrayIndexText(const char* file, int line, const char* array, float index)
{
    char place[64];
    std::snprintf(place, sizeof place, ":%d: index %g", line, static_cast<double>(index));
    return std::string(file) + place + " is outside of array '" + array + "'";
}
