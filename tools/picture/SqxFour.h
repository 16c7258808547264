#pragma once

#include <cstring>

#include "QxShading.h"

/// Four numbers that are computed at once. GCC and Clang compile this vector type to the vector
/// instructions of the processor.
using SqxFour [[gnu::vector_size(16)]] = float;

/// Returns the numbers of the vector, and 0 as the fourth.
[[nodiscard]] inline SqxFour SqxFourOf(const QxVector3& vector)
{
    return SqxFour{vector.x, vector.y, vector.z, 0};
}

/// Returns the first three numbers.
[[nodiscard]] inline QxVector3 SqxVectorOf(const SqxFour& four)
{
    QxVector3 vector;
    std::memcpy(&vector, &four, sizeof(vector));
    return vector;
}

/// Loads a color and the number that follows it in memory, which must exist, such as the first one
/// of the next color.
[[nodiscard]] inline SqxFour SqxLoadFour(const QxRGBColor* color)
{
    SqxFour four;
    std::memcpy(&four, color, sizeof(four));
    return four;
}

/// Returns the first three numbers.
[[nodiscard]] inline QxRGBColor SqxColorOf(const SqxFour& four)
{
    QxRGBColor color;
    std::memcpy(&color, &four, sizeof(color));
    return color;
}
