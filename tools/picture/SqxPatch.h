#pragma once

#include <vector>

#include "picture/SqxShape.h"

/// The points of a shape for a rectangle of u and v, before they are stored in a grid.
class SqxPatch {
public:
    /// The first point is at `u` and `v`, and the others follow in steps of `du` and `dv`. The
    /// shape must outlive the patch.
    SqxPatch(const SqxShape& shape, const QxGrid& layout, float u, float v, float du, float dv);

    [[nodiscard]] const QxGrid& Layout() const { return m_layout; }
    /// True if the shape is closed and the patch turns its inner side to the camera at each point:
    /// then other parts of the shape cover the patch. Computes only two columns of points.
    [[nodiscard]] bool IsHidden() const;
    /// Sets the variables of `grid` that depend on the shape and the rectangle: `P`, `dPdu`,
    /// `dPdv`, `N`, `Ng`, `I`, `u`, `v`, `s`, `t`, `du` and `dv`. The grid must have the layout of
    /// the patch.
    void Place(QxHostGrid& grid) const;

private:
    struct Columns {
        std::vector<float> u;
        std::vector<float> x;
        std::vector<float> z;
        std::vector<float> xByU;
        std::vector<float> zByU;
    };
    /// Adjacent points of one row, and where to store their vectors.
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
