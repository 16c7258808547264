#pragma once

#include <cstring>

#include "QxMath.h"

// The share of a filter kernel that lies left of a place, by kernel. Each has the area 1 and is
// scaled so that one sample spacing is one unit.

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

/// A bell with the standard deviation of half a spacing.
inline float Gaussian(float x)
{
    return 0.5f * qxmath::Erfc(-x * 1.41421356f);
}

/// Integral of the Catmull-Rom kernel from 0 to x, for x from 0 to 2.
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

/// A filter by name. The first row is the default.
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

/// The place of the name in the table; that of the default for an unknown one or null.
inline unsigned int Find(const char* name)
{
    for (unsigned int i = 0; i < sizeof k_filters / sizeof *k_filters; ++i)
        if (name && std::strcmp(k_filters[i].name, name) == 0)
            return i;
    return 0;
}

}  // namespace qxfilter

// `filterstep` of one sample averages over what the point covers, around the sample. It has the operands of
// the one between two samples: so the length of the interval, without its last 9 bits, takes the
// place of the second sample, in the payload of a NaN.

/// Encodes a length as the second sample; 0 for a length that is no number.
inline float QxIntervalAround(float length)
{
    unsigned int bits;
    std::memcpy(&bits, &length, sizeof bits);
    bits = 0x7fc00000u | (length >= 0 ? bits >> 9 : 0u);
    std::memcpy(&length, &bits, sizeof bits);
    return length;
}

/// The length of the interval, for what is no number; that without such bits has length 0.
inline float QxLengthOfInterval(float s2)
{
    unsigned int bits;
    std::memcpy(&bits, &s2, sizeof bits);
    bits = (bits & 0x003fffffu) << 9;
    std::memcpy(&s2, &bits, sizeof bits);
    return s2;
}

/// A step at `edge`, filtered over the interval between two samples, or around the first one if the
/// second is from `QxIntervalAround`. `width` stretches it around its middle. An empty interval gives
/// the plain step.
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

/// An unknown filter is the default one.
inline float QxFilterStep(float edge, float s1, float s2, float width, const char* filter)
{
    return QxFilterStepOf(qxfilter::k_filters[qxfilter::Find(filter)].share, edge, s1, s2, width);
}
