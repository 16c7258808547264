#pragma once

#include "QxMath.h"

/// Returns the dot product, which is the cosine of the angle for unit vectors.
inline float QxDot(const QxVector3& a, const QxVector3& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline float QxDot(const QxRGBColor& a, const QxRGBColor& b)
{
    return a.r * b.r + a.g * b.g + a.b * b.b;
}

/// Returns the cross product; zero for parallel vectors.
inline QxVector3 QxCross(const QxVector3& a, const QxVector3& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// Returns a power of 2 that scales the largest component so that its square neither overflows nor
/// underflows; 1 except for extremely long and short vectors. Has no branch, so that loops can be
/// vectorized.
inline float QxScaleForSquares(const QxVector3& v)
{
    const float largest = QxMax(QxMax(qxmath::Abs(v.x), qxmath::Abs(v.y)), qxmath::Abs(v.z));
    const float small = largest < 1e-18f ? 0x1p100f : 1.0f;
    return largest > 1e18f ? 0x1p-100f : small;
}

inline float QxLength(const QxVector3& v)
{
    const float scale = QxScaleForSquares(v);
    const QxVector3 scaled = v * scale;
    return qxmath::Sqrt(QxDot(scaled, scaled)) * (1 / scale);
}

inline float QxDistance(const QxVector3& a, const QxVector3& b)
{
    return QxLength(a - b);
}

/// Returns v scaled to unit length; the zero vector is returned unchanged.
inline QxVector3 QxNormalize(const QxVector3& v)
{
    const QxVector3 scaled = v * QxScaleForSquares(v);
    const float length = qxmath::Sqrt(QxDot(scaled, scaled));
    return scaled * (length > 0 ? 1 / length : 1);
}

/// Returns n, or -n if the true normal points in the direction of `incident` rather than against
/// it.
inline QxVector3 QxFaceForward(const QxVector3& n, const QxVector3& incident,
                               const QxVector3& trueNormal)
{
    return QxDot(incident, trueNormal) > 0 ? -n : n;
}

/// Returns the mirrored direction, with the length of `incident`. `normal` must have unit length.
inline QxVector3 QxReflect(const QxVector3& incident, const QxVector3& normal)
{
    return incident - normal * (2 * QxDot(incident, normal));
}

/// Returns the direction of the refracted ray, or zero at total reflection. `eta` is the refractive
/// index of the medium that the ray leaves, divided by that of the medium that it enters. Both
/// vectors must have unit length.
inline QxVector3 QxRefract(const QxVector3& incident, const QxVector3& normal, float eta)
{
    const float cosine = -QxDot(incident, normal);
    const float k = 1 - eta * eta * (1 - cosine * cosine);
    if (k < 0)
        return {0, 0, 0};
    return incident * eta + normal * (eta * cosine - qxmath::Sqrt(k));
}

/// The fractions of light that a smooth surface between two media reflects and transmits, and the
/// directions of the reflected and the refracted ray. At total reflection the fractions are 1 and
/// 0, and the refracted direction is zero.
///
/// Augustin Fresnel's equations for unpolarized light. The transmitted fraction is the rest,
/// multiplied by the square of `eta`, since refraction changes the width of a cone of rays.
struct QxFresnelShares {
    float reflected;
    float transmitted;
    QxVector3 reflection;
    QxVector3 refraction;
};

inline QxFresnelShares QxFresnel(const QxVector3& incident, const QxVector3& normal, float eta)
{
    QxFresnelShares shares = {1, 0, QxReflect(incident, normal), {0, 0, 0}};
    const float cosIn = qxmath::Abs(QxDot(incident, normal));
    const float sinOutSquared = eta * eta * (1 - cosIn * cosIn);
    if (sinOutSquared >= 1)
        return shares;
    shares.refraction = QxRefract(incident, normal, eta);
    const float cosOut = qxmath::Sqrt(1 - sinOutSquared);
    const float parallel = (cosIn - eta * cosOut) / (cosIn + eta * cosOut);
    const float perpendicular = (eta * cosIn - cosOut) / (eta * cosIn + cosOut);
    shares.reflected = 0.5f * (parallel * parallel + perpendicular * perpendicular);
    shares.transmitted = (1 - shares.reflected) * eta * eta;
    return shares;
}

/// Returns the distance of q from the segment between two points.
inline float QxPointLineDistance(const QxVector3& from, const QxVector3& to, const QxVector3& q)
{
    const QxVector3 line = to - from;
    const float lengthSquared = QxDot(line, line);
    const float t =
        lengthSquared > 0 ? QxClamp(QxDot(q - from, line) / lengthSquared, 0.0f, 1.0f) : 0.0f;
    return QxDistance(q, from + line * t);
}

/// Rotates q by an angle in radians around the axis through two points, by the right-hand rule
/// (Olinde Rodrigues's formula).
inline QxVector3 QxRotatePoint(const QxVector3& q, float angle, const QxVector3& from,
                               const QxVector3& to)
{
    const QxVector3 axis = QxNormalize(to - from);
    const QxVector3 arm = q - from;
    const float c = qxmath::Cos(angle);
    const float s = qxmath::Sin(angle);
    return from + arm * c + QxCross(axis, arm) * s + axis * (QxDot(axis, arm) * (1 - c));
}
