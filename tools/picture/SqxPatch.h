#pragma once

#include <vector>

#include "picture/SqxShape.h"

/// Points of a shape in lines, before there is a grid of them.
class SqxPatch {
public:
    /// The first point has `u` and `v`, the others follow at these steps. The shape must outlive
    /// the patch.
    SqxPatch(const SqxShape& shape, const QxGrid& layout, float u, float v, float du, float dv);

    [[nodiscard]] const QxGrid& Layout() const { return m_layout; }
    /// No point shows the camera its outer side, and the shape has others in front of it. It costs
    /// as much as two columns of points.
    [[nodiscard]] bool IsHidden() const;
    /// Sets places, normals and parameters of the grid's points, which has the patch's layout.
    void Place(QxHostGrid& grid) const;

private:
    struct Columns {
        std::vector<float> u;
        std::vector<float> x;
        std::vector<float> z;
        std::vector<float> xByU;
        std::vector<float> zByU;
    };
    /// Points of a row.
    struct Points {
        std::size_t column;  // of the first
        std::size_t count;
        QxVector3* P;
        QxVector3* dPdu;
        QxVector3* dPdv;
        QxVector3* N;
    };

    void Place(const Points& points, const SqxShape::Row& row) const;
    [[nodiscard]] bool IsTurnedAway(std::size_t column) const;

    const SqxShape& m_shape;
    QxGrid m_layout;
    float m_du;
    float m_dv;
    Columns m_columns;
    std::vector<float> m_v;  // by row
    std::vector<SqxShape::Row> m_rows;
};
