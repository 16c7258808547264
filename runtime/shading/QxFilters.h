#pragma once

#include <cstring>

#include "QxMath.h"

// Each function in `k_filters` returns the integral of a filter kernel from minus infinity up to a
// position. The kernel has the area 1, its center is at 0, and one sample spacing is one unit.

namespace qxfilter {

inline float Box(float x)
{
    return QxClamp(x + 0.5f, 0.0f, 1.0f);
}

inline float Triangle(float x)
{
    const float t = QxClamp(x, -1.0f, 1.0f);
    return t < 0 ? 0.5f * (1 + t) * (1 + t) : 1 - 0.5f * (1 - t) * (1 - t);
}

/// Returns the integral up to x of a Gaussian whose standard deviation is half a sample spacing.
inline float Gaussian(float x)
{
    return 0.5f * qxmath::Erfc(-x * 1.41421356f);
}

/// Returns the integral of the Catmull-Rom kernel from 0 to x, for x from 0 to 2.
inline float CatmullRomHalf(float x)
{
    if (x <= 1)
        return ((0.375f * x - 0.8333333f) * x * x + 1) * x;
    return (((-0.125f * x + 0.8333333f) * x - 2) * x + 2) * x - 0.1666667f;
}

inline float CatmullRom(float x)
{
    const float t = QxClamp(x, -2.0f, 2.0f);
    return t < 0 ? 0.5f - CatmullRomHalf(-t) : 0.5f + CatmullRomHalf(t);
}

/// A filter and its name. The first row of `k_filters` is the default.
struct Filter {
    const char* name;
    float (*share)(float);
};

inline constexpr Filter k_filters[] = {
    {"catmull-rom", CatmullRom},
    {"box", Box},
    {"triangle", Triangle},
    {"gaussian", Gaussian},
};

/// Returns the index of the name in the table; that of the default for null or an unknown name.
inline unsigned int Find(const char* name)
{
    for (unsigned int i = 0; i < sizeof k_filters / sizeof *k_filters; ++i)
        if (name && std::strcmp(k_filters[i].name, name) == 0)
            return i;
    return 0;
}

}  // namespace qxfilter

// `filterstep` with one sample averages over the interval that the shading point covers around the
// sample. The primitive has operands for two samples, so a NaN is passed as the second one. The
// payload of this NaN is the length of the interval, a float without its last 9 bits.

/// Encodes a length as the second sample; a negative length and NaN are encoded as 0.
inline float QxIntervalAround(float length)
{
    unsigned int bits;
    std::memcpy(&bits, &length, sizeof bits);
    bits = 0x7fc00000u | (length >= 0 ? bits >> 9 : 0u);
    std::memcpy(&length, &bits, sizeof bits);
    return length;
}

/// Returns the length that a NaN contains; 0 for a NaN with an empty payload.
inline float QxLengthOfInterval(float s2)
{
    unsigned int bits;
    std::memcpy(&bits, &s2, sizeof bits);
    bits = (bits & 0x003fffffu) << 9;
    std::memcpy(&s2, &bits, sizeof bits);
    return s2;
}

/// Returns a step at `edge`, filtered over the interval between two samples, or around the first
/// one if the second is NaN, as from `QxIntervalAround`. `width` scales the interval around its
/// middle. If the scaled interval is empty, the result is an unfiltered step at the first sample.
template <class Filter>
inline float QxFilterStepOf(const Filter& filter, float edge, float s1, float s2, float width)
{
    const bool around = s2 != s2;
    const float length = around ? QxLengthOfInterval(s2) : qxmath::Abs(s2 - s1);
    const float middle = around ? s1 : 0.5f * (s1 + s2);
    const float spacing = length * qxmath::Abs(width);
    const float place = (middle - edge) / spacing;
    return spacing > 0 ? filter(place) : QxStep(edge, s1);
}

/// As `QxFilterStepOf`, for the filter with this name; null or an unknown name selects the default.
inline float QxFilterStep(float edge, float s1, float s2, float width, const char* filter)
{
    return QxFilterStepOf(qxfilter::k_filters[qxfilter::Find(filter)].share, edge, s1, s2, width);
}
