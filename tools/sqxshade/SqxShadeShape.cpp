#include "sqxshade/SqxShadeShape.h"

#include <cmath>

#include "QxMatrixMath.h"

namespace {

constexpr float k_zoom = 3.9F;  // makes the shape fill four fifths of the picture
constexpr float k_pi = 3.14159265F;
constexpr float k_turnAroundX = -0.35F;  // radians: the upper pole shows
constexpr float k_turnAroundY = 0.3F;
constexpr float k_pole = 1e-4F;  // rows begin so far from the poles, where u has no length

}  // namespace

SqxShadeShape::SqxShadeShape(bool square) : m_square(square), m_toCurrent(WorldToCurrent())
{
    if (square)
        return;
    const QxMatrix44 upright = QxRotate(QxMatrix44::Identity(), k_turnAroundY, {0, 1, 0});
    const QxMatrix44 tilt = QxRotate(QxMatrix44::Identity(), k_turnAroundX, {1, 0, 0});
    m_toCurrent = upright * tilt * WorldToCurrent();
}

QxMatrix44 SqxShadeShape::WorldToCurrent()
{
    return QxTranslate(QxMatrix44::Identity(), {0, 0, k_distance});
}

float SqxShadeShape::LengthAlongU() const
{
    return (m_square ? 1 : k_pi) * k_zoom / k_distance;
}

float SqxShadeShape::LengthAlongV() const
{
    return (m_square ? 1 : k_pi / 2) * k_zoom / k_distance;
}

/// u and s lead to the right, v and t down; the seam of the sphere is behind.
SqxShadeShape::Point SqxShadeShape::At(float u, float v) const
{
    if (m_square)
        return {{2 * u - 1, 1 - 2 * v, 0}, {2, 0, 0}, {0, -2, 0}};
    const float around = 2 * k_pi * (u - 0.5F);
    const float range = 1 - 2 * k_pole;
    const float down = k_pi * (k_pole + range * v);
    const float c = std::cos(around);
    const float s = std::sin(around);
    const float radius = std::sin(down);
    return {{s * radius, std::cos(down), -c * radius},
            QxVector3{c * radius, 0, s * radius} * (2 * k_pi),
            QxVector3{s * std::cos(down), -radius, -c * std::cos(down)} * (k_pi * range)};
}

void SqxShadeShape::Place(QxHostGrid& grid, float u, float v, float du, float dv) const
{
    grid.Set("du", du);
    grid.Set("dv", dv);
    const auto P = grid.Values<QxVector3>("P");
    const auto N = grid.Values<QxVector3>("N");
    const auto alongU = grid.Values<QxVector3>("dPdu");
    const auto alongV = grid.Values<QxVector3>("dPdv");
    const auto us = grid.Values<float>("u");
    const auto vs = grid.Values<float>("v");
    for (std::size_t i = 0; i < grid.Size(); ++i) {
        const std::size_t column = i % grid.Layout().columns;
        const std::size_t row = i / grid.Layout().columns;
        us[i] = u + static_cast<float>(column) * du;
        vs[i] = v + static_cast<float>(row) * dv;
        const Point point = At(us[i], vs[i]);
        P[i] = QxTransformPoint(point.place, m_toCurrent);
        alongU[i] = QxTransformVector(point.alongU, m_toCurrent);
        alongV[i] = QxTransformVector(point.alongV, m_toCurrent);
        N[i] = QxCross(alongU[i], alongV[i]);
    }
    grid.Set("s", grid.Get("u"));
    grid.Set("t", grid.Get("v"));
    grid.Set("Ng", grid.Get("N"));
    grid.Set("I", grid.Get("P"));
}

SqxShadeShape::Projected SqxShadeShape::Project(const QxVector3& place)
{
    const float scale = k_zoom / place.z;
    return {place.x * scale, place.y * scale, place.z};
}

/// The last column divides by the distance; depth is 0 one unit away and nears 1 far off.
QxMatrix44 SqxShadeShape::Projection(const QxVector3& middle, const QxVector3& half)
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
