// Shapes are functions of u and v, so that derivatives are exact and a grid can cover any part.
//
// The rows of a sphere end shortly before the poles: at a pole dPdu is zero, so a normal computed
// from the derivatives would have no direction.
//
// Tested by tests/picture/SqxPictureTest.cpp.

#include "picture/SqxShape.h"

#include <cmath>

#include "QxMatrixMath.h"

namespace {

constexpr float k_zoom = 3.9F;  // the shape fills about four fifths of the picture's smaller edge
constexpr float k_pi = 3.14159265F;
constexpr float k_pole = 1e-4F;  // from a pole to v = 0 or 1, as a part of the way between poles
constexpr float k_range = 1 - 2 * k_pole;
constexpr float k_tubeRadius = 0.36F;  // of a torus whose outer radius is 1
constexpr float k_turnAroundY = 0.3F;  // radians

/// Returns the rotation around x in radians, which makes the upper pole or the hole visible.
float TurnAroundX(SqxShapeKind kind)
{
    return kind == SqxShapeKind::Torus ? -0.85F : -0.35F;
}

}  // namespace

SqxShape::SqxShape(SqxShapeKind kind) : m_kind(kind), m_toCurrent(WorldToCurrent())
{
    if (kind == SqxShapeKind::Square)
        return;
    const QxMatrix44 upright = QxRotate(QxMatrix44::Identity(), k_turnAroundY, {0, 1, 0});
    const QxMatrix44 tilt = QxRotate(QxMatrix44::Identity(), TurnAroundX(kind), {1, 0, 0});
    m_toCurrent = upright * tilt * WorldToCurrent();
}

QxMatrix44 SqxShape::WorldToCurrent()
{
    return QxTranslate(QxMatrix44::Identity(), {0, 0, k_distance});
}

float SqxShape::LengthAlongU() const
{
    return (m_kind == SqxShapeKind::Square ? 1 : k_pi) * k_zoom / k_distance;
}

float SqxShape::LengthAlongV() const
{
    float length = 1;
    if (m_kind == SqxShapeKind::Sphere)
        length = k_pi / 2;
    else if (m_kind == SqxShapeKind::Torus)
        length = k_pi * k_tubeRadius;
    return length * k_zoom / k_distance;
}

float SqxShape::LengthOfU() const
{
    return m_kind == SqxShapeKind::Square ? 2 : 2 * k_pi;
}

/// u and s grow to the right; the seam of sphere and torus is on the far side.
SqxShape::Column SqxShape::ColumnAt(float u) const
{
    if (m_kind == SqxShapeKind::Square)
        return {2 * u - 1, 0, 1, 0};
    const float around = 2 * k_pi * (u - 0.5F);
    const float sine = std::sin(around);
    const float cosine = std::cos(around);
    return {sine, -cosine, cosine, sine};
}

/// On a square and a sphere, v and t grow downward, on the sphere from the upper pole to the lower
/// one. On a torus they start at the hole and first go over the top.
SqxShape::Row SqxShape::RowAt(float v) const
{
    if (m_kind == SqxShapeKind::Square)
        return {1, 1 - 2 * v, 0, -2};
    if (m_kind == SqxShapeKind::Torus) {
        const float sine = k_tubeRadius * std::sin(2 * k_pi * v);
        const float cosine = k_tubeRadius * std::cos(2 * k_pi * v);
        return {1 - k_tubeRadius - cosine, sine, 2 * k_pi * sine, 2 * k_pi * cosine};
    }
    const float down = k_pi * (k_pole + k_range * v);
    const float sine = std::sin(down);
    const float cosine = std::cos(down);
    return {sine, cosine, k_pi * k_range * cosine, -k_pi * k_range * sine};
}

SqxShape::Projected SqxShape::Project(const QxVector3& place)
{
    const float scale = k_zoom / place.z;
    return {place.x * scale, place.y * scale, place.z};
}

/// The last column divides by the distance; depth is 0 at one unit and approaches 1 at infinity.
QxMatrix44 SqxShape::Projection(const QxVector3& middle, const QxVector3& half)
{
    return {{{half.x * k_zoom, 0, 0, 0},
             {0, half.y * k_zoom, 0, 0},
             {middle.x, middle.y, 1, 1},
             {0, 0, -1, 0}}};
}

void SqxDeriveGeometry(QxHostGrid& grid)
{
    const QxVector3* P = grid.Values<QxVector3>("P").data();
    const auto alongU = grid.Values<QxVector3>("dPdu");
    const auto alongV = grid.Values<QxVector3>("dPdv");
    const auto Ng = grid.Values<QxVector3>("Ng");
    QxDerivative(alongU.data(), P, grid.Values<float>("du")[0], grid.Layout(), QxGridAxis::U);
    QxDerivative(alongV.data(), P, grid.Values<float>("dv")[0], grid.Layout(), QxGridAxis::V);
    for (std::size_t i = 0; i < grid.Size(); ++i)
        Ng[i] = QxCross(alongU[i], alongV[i]);
    grid.Set("I", grid.Get("P"));
}
