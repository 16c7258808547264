#pragma once

#include <cstring>

#include "QxMath.h"

// Conversions between color spaces and linear RGB. Each space has a conversion in each direction;
// hues are from 0 to 1.

namespace qxcolor {

/// Multiplies a matrix by the color as a column.
inline QxRGBColor Linear(const QxRGBColor& c, const float (&m)[3][3])
{
    return {m[0][0] * c.r + m[0][1] * c.g + m[0][2] * c.b,
            m[1][0] * c.r + m[1][1] * c.g + m[1][2] * c.b,
            m[2][0] * c.r + m[2][1] * c.g + m[2][2] * c.b};
}

inline QxRGBColor Same(const QxRGBColor& c)
{
    return c;
}

/// Returns the fully saturated color of a hue, of which only the fraction matters.
inline QxRGBColor OfHue(float hue)
{
    const float h = (hue - qxmath::Floor(hue)) * 6;
    return {QxClamp(qxmath::Abs(h - 3) - 1, 0.0f, 1.0f),
            QxClamp(2 - qxmath::Abs(h - 2), 0.0f, 1.0f),
            QxClamp(2 - qxmath::Abs(h - 4), 0.0f, 1.0f)};
}

/// Returns the hue, from 0 (red) through 1/3 (green) and 2/3 (blue) to 1, which is reached only by
/// rounding; 0 for a gray. `high` is the largest component, and `range` its difference from the
/// smallest one.
inline float HueOf(const QxRGBColor& c, float high, float range)
{
    if (range <= 0)
        return 0;
    float hue;
    if (c.r == high)
        hue = (c.g - c.b) / range;
    else if (c.g == high)
        hue = 2 + (c.b - c.r) / range;
    else
        hue = 4 + (c.r - c.g) / range;
    return hue < 0 ? hue / 6 + 1 : hue / 6;
}

// Hue, saturation and value: Alvy Ray Smith, "Color gamut transform pairs", 1978. Hue, saturation
// and lightness: George Joblove and Donald Greenberg, "Color spaces for computer graphics", 1978.

inline QxRGBColor FromHsv(const QxRGBColor& c)
{
    return ((OfHue(c.r) - 1.0f) * c.g + 1.0f) * c.b;
}

inline QxRGBColor ToHsv(const QxRGBColor& c)
{
    const float high = QxMax(c.r, QxMax(c.g, c.b));
    const float range = high - QxMin(c.r, QxMin(c.g, c.b));
    return {HueOf(c, high, range), high != 0 ? range / high : 0, high};
}

inline QxRGBColor FromHsl(const QxRGBColor& c)
{
    const float chroma = (1 - qxmath::Abs(2 * c.b - 1)) * c.g;
    return (OfHue(c.r) - 0.5f) * chroma + c.b;
}

inline QxRGBColor ToHsl(const QxRGBColor& c)
{
    const float high = QxMax(c.r, QxMax(c.g, c.b));
    const float low = QxMin(c.r, QxMin(c.g, c.b));
    const float lightness = 0.5f * (high + low);
    const float width = 1 - qxmath::Abs(2 * lightness - 1);
    return {HueOf(c, high, high - low), width != 0 ? (high - low) / width : 0, lightness};
}

// Tristimulus values, for the primaries of ITU-R BT.709 with the white point D65.

inline QxRGBColor FromXyz(const QxRGBColor& c)
{
    static const float matrix[3][3] = {{3.240479f, -1.537150f, -0.498535f},
                                       {-0.969256f, 1.875992f, 0.041556f},
                                       {0.055648f, -0.204043f, 1.057311f}};
    return Linear(c, matrix);
}

inline QxRGBColor ToXyz(const QxRGBColor& c)
{
    static const float matrix[3][3] = {{0.412453f, 0.357580f, 0.180423f},
                                       {0.212671f, 0.715160f, 0.072169f},
                                       {0.019334f, 0.119193f, 0.950227f}};
    return Linear(c, matrix);
}

/// Converts from chromaticity and luminance. If y is 0, there is no color, and the result is black.
inline QxRGBColor FromXyY(const QxRGBColor& c)
{
    if (c.g == 0)
        return {0, 0, 0};
    const float scale = c.b / c.g;
    return FromXyz({c.r * scale, c.b, (1 - c.r - c.g) * scale});
}

/// Converts to chromaticity and luminance. Black has no chromaticity; its results are 0.
inline QxRGBColor ToXyY(const QxRGBColor& c)
{
    const QxRGBColor xyz = ToXyz(c);
    const float sum = xyz.r + xyz.g + xyz.b;
    if (sum == 0)
        return {0, 0, 0};
    return {xyz.r / sum, xyz.g / sum, xyz.g};
}

// Luma and chroma of the NTSC system. `ToYiq` uses its rounded weights, and `FromYiq` the inverse
// of this rounded matrix.

inline QxRGBColor FromYiq(const QxRGBColor& c)
{
    static const float matrix[3][3] = {
        {1, 0.9556881f, 0.6198581f}, {1, -0.2715818f, -0.6468738f}, {1, -1.1081773f, 1.7050646f}};
    return Linear(c, matrix);
}

inline QxRGBColor ToYiq(const QxRGBColor& c)
{
    static const float matrix[3][3] = {
        {0.299f, 0.587f, 0.114f}, {0.596f, -0.275f, -0.321f}, {0.212f, -0.523f, 0.311f}};
    return Linear(c, matrix);
}

/// A space with its name and both conversions.
struct Space {
    const char* name;
    QxRGBColor (*toRgb)(const QxRGBColor&);
    QxRGBColor (*fromRgb)(const QxRGBColor&);
};

/// The first row must be RGB, which replaces unknown spaces.
inline constexpr Space k_spaces[] = {
    {"rgb", Same, Same},     {"hsv", FromHsv, ToHsv}, {"hsl", FromHsl, ToHsl},
    {"xyz", FromXyz, ToXyz}, {"XYZ", FromXyz, ToXyz}, {"xyY", FromXyY, ToXyY},
    {"YIQ", FromYiq, ToYiq},
};

/// Returns the space with this name; null for an unknown name and for null, the empty text.
inline const Space* Find(const char* name)
{
    for (const Space& space : k_spaces)
        if (name && std::strcmp(space.name, name) == 0)
            return &space;
    return nullptr;
}

}  // namespace qxcolor

/// True if there is a color space with this name; false for null.
inline bool QxIsColorSpace(const char* name)
{
    return qxcolor::Find(name) != nullptr;
}

/// Converts from the named space to RGB. An unknown space is treated as RGB; the name must not be
/// null. The same holds for the functions below.
inline QxRGBColor QxColorToRgb(const QxRGBColor& color, const char* space)
{
    const qxcolor::Space* found = qxcolor::Find(space);
    return found ? found->toRgb(color) : color;
}

inline QxRGBColor QxColorFromRgb(const QxRGBColor& color, const char* space)
{
    const qxcolor::Space* found = qxcolor::Find(space);
    return found ? found->fromRgb(color) : color;
}

inline QxRGBColor QxColorTransform(const QxRGBColor& color, const char* from, const char* to)
{
    return QxColorFromRgb(QxColorToRgb(color, from), to);
}
