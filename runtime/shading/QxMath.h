#pragma once

#include "QxFloatMath.h"
#include "QxValues.h"

// Functions of numbers, and some of triples, component by component. If the mathematical function
// has no real value, the result is 0, except for `QxMod`, `QxAsin` and `QxAcos`. The compiler uses
// the same functions for constant folding.

constexpr float QX_PI_FLOAT = 3.14159265358979323846f;

inline float QxRadians(float degrees)
{
    return degrees * 0.01745329238474369f;
}

inline float QxDegrees(float radians)
{
    return radians * 57.2957763671875f;
}

inline float QxClamp(float x, float low, float high)
{
    return x < low ? low : (high < x ? high : x);
}

/// Here and in `QxAcos`, arguments outside -1..1 are clamped.
inline float QxAsin(float x)
{
    return qxmath::Asin(QxClamp(x, -1.0f, 1.0f));
}

inline float QxAcos(float x)
{
    return qxmath::Acos(QxClamp(x, -1.0f, 1.0f));
}

/// Returns `base` to the power of `exponent`; 0 for a base of 0, and for a negative base with an
/// exponent that is not a whole number. This form is for vectorized loops: all cases are computed
/// in double precision, and then one is selected.
inline float QxPowInVectors(float base, float exponent)
{
    const double x = base;
    const double y = exponent;
    const double power = qxmath::Pow(qxmath::Magnitude(x), y);
    const double limited = qxmath::LimitedExponent(y);
    const double ofNegative = qxmath::IsWhole(limited) ? power * qxmath::SignForOdd(limited) : 0;
    const double nonZero = x < 0 ? ofNegative : power;
    const double any = x == 0 ? 0 : nonZero;
    return static_cast<float>(y == 2 ? x * x : any);
}

/// Returns the same as `QxPowInVectors` if the base is not negative, in two thirds of the time.
inline float QxPowOfNonNegative(float base, float exponent)
{
    const float power = static_cast<float>(qxmath::Pow(base, exponent));
    const float any = base == 0 ? 0 : power;
    return exponent == 2 ? base * base : any;
}

/// Returns the same as `QxPowInVectors`. For one value, a branch for the most common exponents
/// pays.
inline float QxPow(float base, float exponent)
{
    if (exponent == 1)
        return base == 0 ? 0 : base;
    return exponent == 2 ? base * base : QxPowInVectors(base, exponent);
}

/// Returns the same as `QxPowInVectors`, for loops that cannot be vectorized.
inline float QxPowAtPoint(float base, float exponent)
{
    if (exponent == 2)
        return base * base;
    const double y = exponent;
    const double power = qxmath::PowAtPoint(qxmath::Magnitude(base), y);
    if (base < 0) {
        const double limited = qxmath::LimitedExponent(y);
        return qxmath::IsWhole(limited) ? static_cast<float>(power * qxmath::SignForOdd(limited))
                                        : 0;
    }
    return base == 0 ? 0 : static_cast<float>(power);
}

inline float QxSqrt(float x)
{
    return x <= 0 ? 0.0f : qxmath::Sqrt(x);
}

inline float QxInverseSqrt(float x)
{
    return x <= 0 ? 0.0f : 1 / qxmath::Sqrt(x);
}

inline float QxLog(float x)
{
    return x <= 0 ? 0.0f : qxmath::Log(x);
}

/// Returns the logarithm of x to the given base; 0 for the base 1, which has none.
inline float QxLog(float x, float base)
{
    return x <= 0 || base <= 0 || base == 1 ? 0.0f : qxmath::Log(x) / qxmath::Log(base);
}

/// Returns the remainder of a / b, from 0 up to, but not including, the absolute value of b, apart
/// from rounding: if a / b is large, the result may be far outside this range. NaN if b is 0, or if
/// a or b is infinite.
inline float QxMod(float a, float b)
{
    const float rest = a - qxmath::Trunc(a * (1 / b)) * b;
    return rest < 0 ? rest + qxmath::Abs(b) : rest;
}

/// Returns -1, 0 or 1.
inline float QxSign(float x)
{
    return static_cast<float>((x > 0) - (x < 0));
}

inline float QxMin(float a, float b)
{
    return a < b ? a : b;
}

inline float QxMax(float a, float b)
{
    return b < a ? a : b;
}

/// Returns the whole part of x, clamped to `low` and `high`; `low` for NaN. In C++ the conversion
/// of a number that an int cannot represent is undefined.
inline int QxToInt(float x, int low, int high)
{
    if (!(x > static_cast<float>(low)))
        return low;
    return x < static_cast<float>(high) ? static_cast<int>(x) : high;
}

/// Returns the nearest whole number; halves are rounded up, also below 0. May return a neighbour of
/// it if x + 0.5 cannot be represented.
inline float QxRound(float x)
{
    return qxmath::Floor(x + 0.5f);
}

/// Returns 0 below the edge, and 1 at the edge and above it.
inline float QxStep(float edge, float x)
{
    return edge <= x ? 1.0f : 0.0f;
}

/// Returns a cubic rise from 0 at `low` to 1 at `high`, or a step at `low` if `high` is not above
/// it.
inline float QxSmoothStep(float low, float high, float x)
{
    // All cases are computed, and then one is selected, so that loops over points have no branches.
    const float t = (x - low) / (high - low);
    const float rise = t * t * (3 - 2 * t);
    return x < low ? 0 : (x >= high ? 1 : rise);
}

/// Interpolates linearly from a at 0 to b at 1; also for triples.
template <class Value>
inline Value QxMix(const Value& a, const Value& b, float position)
{
    return a * (1 - position) + b * position;
}

template <class Triple>
inline Triple QxMinTriple(const Triple& a, const Triple& b)
{
    return QxMakeTriple<Triple>(QxMin(a[0], b[0]), QxMin(a[1], b[1]), QxMin(a[2], b[2]));
}

template <class Triple>
inline Triple QxMaxTriple(const Triple& a, const Triple& b)
{
    return QxMakeTriple<Triple>(QxMax(a[0], b[0]), QxMax(a[1], b[1]), QxMax(a[2], b[2]));
}

template <class Triple>
inline Triple QxClampTriple(const Triple& x, const Triple& low, const Triple& high)
{
    return QxMakeTriple<Triple>(QxClamp(x[0], low[0], high[0]), QxClamp(x[1], low[1], high[1]),
                                QxClamp(x[2], low[2], high[2]));
}
