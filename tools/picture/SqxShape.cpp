#include "picture/SqxShape.h"

#include <cmath>

#include "QxMatrixMath.h"

namespace {

constexpr float k_zoom = 3.9F;  // makes the shape fill four fifths of the picture
constexpr float k_pi = 3.14159265F;
constexpr float k_turnAroundX = -0.35F;  // radians: the upper pole shows
constexpr float k_turnAroundY = 0.3F;
constexpr float k_pole = 1e-4F;  // rows begin so far from the poles, where u has no length
constexpr float k_range = 1 - 2 * k_pole;

}  // namespace

SqxShape::SqxShape(bool square) : m_square(square), m_toCurrent(WorldToCurrent())
{
    if (square)
        return;
    const QxMatrix44 upright = QxRotate(QxMatrix44::Identity(), k_turnAroundY, {0, 1, 0});
    const QxMatrix44 tilt = QxRotate(QxMatrix44::Identity(), k_turnAroundX, {1, 0, 0});
    m_toCurrent = upright * tilt * WorldToCurrent();
}

QxMatrix44 SqxShape::WorldToCurrent()
{
    return QxTranslate(QxMatrix44::Identity(), {0, 0, k_distance});
}

float SqxShape::LengthAlongU() const
{
    return (m_square ? 1 : k_pi) * k_zoom / k_distance;
}

float SqxShape::LengthAlongV() const
{
    return (m_square ? 1 : k_pi / 2) * k_zoom / k_distance;
}

SqxShape::Column SqxShape::ColumnAt(float u)
{
    const float around = 2 * k_pi * (u - 0.5F);
    return {u, std::sin(around), std::cos(around)};
}

SqxShape::Row SqxShape::RowAt(float v)
{
    const float down = k_pi * (k_pole + k_range * v);
    return {v, std::sin(down), std::cos(down)};
}

/// u and s lead to the right, v and t down; the seam of the sphere is behind.
SqxShape::Point SqxShape::At(const Column& column, const Row& row) const
{
    if (m_square)
        return {{2 * column.u - 1, 1 - 2 * row.v, 0}, {2, 0, 0}, {0, -2, 0}};
    return {{column.sine * row.sine, row.cosine, -column.cosine * row.sine},
            QxVector3{column.cosine * row.sine, 0, column.sine * row.sine} * (2 * k_pi),
            QxVector3{column.sine * row.cosine, -row.sine, -column.cosine * row.cosine} *
                (k_pi * k_range)};
}

void SqxShape::Place(QxHostGrid& grid, float u, float v, float du, float dv) const
{
    grid.Set("du", du);
    grid.Set("dv", dv);
    const QxHiddenVariables at = grid.Hidden();
    std::vector<Column> columns;
    for (unsigned int column = 0; column < grid.Layout().columns; ++column)
        columns.push_back(ColumnAt(u + static_cast<float>(column) * du));
    std::size_t i = 0;
    for (unsigned int line = 0; line < grid.Layout().rows; ++line) {
        const Row row = RowAt(v + static_cast<float>(line) * dv);
        for (const Column& column : columns) {
            const Point point = At(column, row);
            at.u[i] = at.s[i] = column.u;
            at.v[i] = at.t[i] = row.v;
            at.P[i] = at.I[i] = QxTransformPoint(point.place, m_toCurrent);
            at.dPdu[i] = QxTransformVector(point.alongU, m_toCurrent);
            at.dPdv[i] = QxTransformVector(point.alongV, m_toCurrent);
            at.N[i] = at.Ng[i] = QxCross(at.dPdu[i], at.dPdv[i]);
            ++i;
        }
    }
}

bool SqxShape::IsTurnedAway(QxHostGrid& grid) const
{
    const auto N = grid.Values<QxVector3>("N");
    const auto I = grid.Values<QxVector3>("I");
    for (std::size_t i = 0; i < grid.Size(); ++i)
        if (QxDot(N[i], I[i]) < 0)
            return false;
    return !m_square;
}

SqxShape::Projected SqxShape::Project(const QxVector3& place)
{
    const float scale = k_zoom / place.z;
    return {place.x * scale, place.y * scale, place.z};
}

/// The last column divides by the distance; depth is 0 one unit away and nears 1 far off.
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
