#pragma once

#include <cstring>

#include "QxMath.h"

/// A basis of splines: four weights, as cubic polynomials of the position in a segment, and the
/// number of control values from the start of one segment to that of the next.
struct QxSplineBasis {
    const char* name;
    int step;
    float weights[4][4];  // by power of the position, highest first, then by control value
};

/// The first row is the default basis.
///
/// "catmull-rom" is from Edwin Catmull and Raphael Rom, "A class of local interpolating splines",
/// 1974; the next three are from James Foley and others, "Computer Graphics: Principles and
/// Practice", chapter 11.
inline constexpr QxSplineBasis k_qxSplineBases[] = {
    {"catmull-rom",
     1,
     {{-0.5f, 1.5f, -1.5f, 0.5f}, {1, -2.5f, 2, -0.5f}, {-0.5f, 0, 0.5f, 0}, {0, 1, 0, 0}}},
    {"bezier", 3, {{-1, 3, -3, 1}, {3, -6, 3, 0}, {-3, 3, 0, 0}, {1, 0, 0, 0}}},
    {"bspline",
     1,
     {{-1 / 6.0f, 0.5f, -0.5f, 1 / 6.0f},
      {0.5f, -1, 0.5f, 0},
      {-0.5f, 0, 0.5f, 0},
      {1 / 6.0f, 2 / 3.0f, 1 / 6.0f, 0}}},
    {"hermite", 2, {{2, 1, -2, 1}, {-3, -2, 3, -1}, {0, 1, 0, 0}, {1, 0, 0, 0}}},
    {"power", 4, {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}},
    {"linear", 1, {{0, 0, 0, 0}, {0, 0, 0, 0}, {0, -1, 1, 0}, {0, 1, 0, 0}}},
};

/// Returns the basis of this name; the default for null or an unknown name.
inline const QxSplineBasis& QxFindSplineBasis(const char* name)
{
    for (const QxSplineBasis& basis : k_qxSplineBases)
        if (name && std::strcmp(basis.name, name) == 0)
            return basis;
    return k_qxSplineBases[0];
}

/// Returns how many of `count` control values, of which there must be at least four, the basis does
/// not use.
constexpr int QxLeftOver(const QxSplineBasis& basis, int count)
{
    return (count - 4) % basis.step;
}

/// A position on a spline: the first control value of its segment, and the position in the segment,
/// from 0 to 1.
struct QxSplinePlace {
    int first;
    float at;
};

/// Returns the place for `position` (0 to 1, clamped; 0 for NaN) among at least four control
/// values. Those that do not fill a segment are not used.
inline QxSplinePlace QxPlaceOnSpline(const QxSplineBasis& basis, float position, int count)
{
    const int segments = (count - 4) / basis.step + 1;
    const float place = position > 0 ? QxMin(position, 1) * static_cast<float>(segments) : 0;
    const int segment = QxToInt(place, 0, segments - 1);
    return {segment * basis.step, place - static_cast<float>(segment)};
}

/// Returns the weight of a control value, 0 to 3 in its segment, at a position in the segment.
inline float QxSplineWeight(const QxSplineBasis& basis, int value, float at)
{
    const auto& w = basis.weights;
    return ((w[0][value] * at + w[1][value]) * at + w[2][value]) * at + w[3][value];
}

/// Returns the weighted sum of `values(i)` for the four i from `first` on, which is the value of
/// the spline.
template <class Value, class Values>
inline Value QxWeigh(const Values& values, int first, float w0, float w1, float w2, float w3)
{
    return values(first) * w0 + values(first + 1) * w1 + values(first + 2) * w2 +
           values(first + 3) * w3;
}

/// Returns the spline at `position` over `count` control values, at least one, which `values(i)`
/// returns; the first control value if there are fewer than four.
template <class Value, class Values>
inline Value QxSpline(const QxSplineBasis& basis, float position, int count, const Values& values)
{
    if (count < 4)
        return values(0);
    const QxSplinePlace place = QxPlaceOnSpline(basis, position, count);
    const auto weight = [&](int value) { return QxSplineWeight(basis, value, place.at); };
    return QxWeigh<Value>(values, place.first, weight(0), weight(1), weight(2), weight(3));
}
