#pragma once

#include <cstring>

#include "QxShading.h"

/// Four numbers that are computed with at once: a vector of GCC and Clang, which make of it what
/// the processor has.
using SqxFour [[gnu::vector_size(16)]] = float;

[[nodiscard]] inline SqxFour SqxFourOf(const QxVector3& vector)
{
    return SqxFour{vector.x, vector.y, vector.z, 0};
}

/// The first three.
[[nodiscard]] inline QxVector3 SqxVectorOf(const SqxFour& four)
{
    QxVector3 vector;
    std::memcpy(&vector, &four, sizeof(vector));
    return vector;
}

/// A color and the number after it in memory, or the next color's first: there must be one.
[[nodiscard]] inline SqxFour SqxLoadFour(const QxRGBColor* color)
{
    SqxFour four;
    std::memcpy(&four, color, sizeof(four));
    return four;
}

/// The first three.
[[nodiscard]] inline QxRGBColor SqxColorOf(const SqxFour& four)
{
    QxRGBColor color;
    std::memcpy(&color, &four, sizeof(color));
    return color;
}
