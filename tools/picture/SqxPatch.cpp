// Terms that depend only on u are computed once for each column, and terms of v once for each row,
// so that a point needs only a few products. Each vector has a separate loop over the points of a
// row, so that the loop compiles to vector instructions.
//
// Tested by tests/picture/SqxPatchTest.cpp.

#include "picture/SqxPatch.h"

#include <algorithm>

#include "QxMatrixMath.h"
#include "picture/SqxFour.h"

namespace {

/// The vectors of a row in the space of the shape: x and z by column, both times `factor` and
/// `unit`, and the same y for all.
struct OwnVectors {
    const float* x;
    const float* z;
    float factor;
    float unit;
    float y;
};

/// Transforms as `QxTransformVector` does, and adds `offset` to each result.
void Transform(QxVector3* results, std::size_t count, const OwnVectors& own, const QxMatrix44& m,
               const QxVector3& offset)
{
    const auto [xs, zs, factor, unit, height] = own;
    const SqxFour alongX = {m[0][0], m[0][1], m[0][2], 0};
    const SqxFour atHeight = SqxFour{m[1][0], m[1][1], m[1][2], 0} * height;
    const SqxFour alongZ = {m[2][0], m[2][1], m[2][2], 0};
    const SqxFour moved = SqxFourOf(offset);
    for (std::size_t i = 0; i < count; ++i) {
        const float x = xs[i] * factor * unit;
        const float z = zs[i] * factor * unit;
        results[i] = SqxVectorOf(x * alongX + atHeight + z * alongZ + moved);
    }
}

}  // namespace

SqxPatch::SqxPatch(const SqxShape& shape, const QxGrid& layout, float u, float v, float du,
                   float dv)
    : m_shape(shape),
      m_layout(layout),
      m_du(du),
      m_dv(dv)
{
    for (unsigned int i = 0; i < layout.columns; ++i) {
        m_columns.u.push_back(u + static_cast<float>(i) * du);
        const SqxShape::Column column = shape.ColumnAt(m_columns.u.back());
        m_columns.x.push_back(column.x);
        m_columns.z.push_back(column.z);
        m_columns.xByU.push_back(column.xByU);
        m_columns.zByU.push_back(column.zByU);
    }
    for (unsigned int i = 0; i < layout.rows; ++i) {
        m_v.push_back(v + static_cast<float>(i) * dv);
        m_rows.push_back(shape.RowAt(m_v.back()));
    }
}

/// Along a row of a surface of revolution, the dot product of N and I is a linear function of the
/// dot product of the column's direction and the middle of the shape. Both are therefore extreme
/// in the same columns.
bool SqxPatch::IsHidden() const
{
    if (!m_shape.IsClosed())
        return false;
    const QxMatrix44& m = m_shape.ToCurrent();
    const QxVector3 middle = {m[3][0], m[3][1], m[3][2]};
    std::vector<float> turns;
    for (std::size_t i = 0; i < m_layout.columns; ++i)
        turns.push_back(QxDot(QxTransformVector({m_columns.x[i], 0, m_columns.z[i]}, m), middle));
    const auto [least, greatest] = std::minmax_element(turns.begin(), turns.end());
    return IsTurnedAway(least - turns.begin()) && IsTurnedAway(greatest - turns.begin());
}

bool SqxPatch::IsTurnedAway(std::size_t column) const
{
    return std::all_of(m_rows.begin(), m_rows.end(), [&](const SqxShape::Row& row) {
        QxVector3 P;
        QxVector3 dPdu;
        QxVector3 dPdv;
        QxVector3 N;
        Place({column, 1, &P, &dPdu, &dPdv, &N}, row);
        return QxDot(N, P) >= 0;
    });
}

void SqxPatch::Place(QxHostGrid& grid) const
{
    grid.Values<float>("du")[0] = m_du;
    grid.Values<float>("dv")[0] = m_dv;
    const QxHiddenVariables at = grid.Hidden();
    const std::size_t count = m_layout.columns;
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const std::size_t first = row * count;
        std::copy(m_columns.u.begin(), m_columns.u.end(), at.u + first);
        std::copy(m_columns.u.begin(), m_columns.u.end(), at.s + first);
        std::fill_n(at.v + first, count, m_v[row]);
        std::fill_n(at.t + first, count, m_v[row]);
        Place({0, count, at.P + first, at.dPdu + first, at.dPdv + first, at.N + first},
              m_rows[row]);
    }
    std::copy_n(at.P, grid.Size(), at.I);
    std::copy_n(at.N, grid.Size(), at.Ng);
}

void SqxPatch::Place(const Points& points, const SqxShape::Row& row) const
{
    const QxMatrix44& m = m_shape.ToCurrent();
    const float* x = m_columns.x.data() + points.column;
    const float* z = m_columns.z.data() + points.column;
    const OwnVectors places = {x, z, row.radius, 1, row.height};
    const OwnVectors alongU = {m_columns.xByU.data() + points.column,
                               m_columns.zByU.data() + points.column, row.radius,
                               m_shape.LengthOfU(), 0};
    const OwnVectors alongV = {x, z, row.radiusByV, 1, row.heightByV};
    Transform(points.P, points.count, places, m, {m[3][0], m[3][1], m[3][2]});
    Transform(points.dPdu, points.count, alongU, m, {0, 0, 0});
    Transform(points.dPdv, points.count, alongV, m, {0, 0, 0});
    for (std::size_t i = 0; i < points.count; ++i)
        points.N[i] = QxCross(points.dPdu[i], points.dPdv[i]);
}
