#pragma once

#include "host/QxHostGrid.h"
#include "picture/SqxPictureSettings.h"

/// The shape to shade and how the camera sees it.
///
/// The camera is at the origin of the current space and looks along z. The middle of the shape is
/// `k_distance` away. The space of a sphere or torus is rotated, so that a pole or the hole is
/// visible.
class SqxShape {
public:
    static constexpr float k_distance = 5;

    explicit SqxShape(SqxShapeKind kind);

    /// Returns the transform from the space of the shape to the current space.
    [[nodiscard]] const QxMatrix44& ToCurrent() const { return m_toCurrent; }
    /// Returns the transform from world space to the current space. The axes of both spaces have
    /// the same directions, and the origin of world space is the middle of the shape.
    [[nodiscard]] static QxMatrix44 WorldToCurrent();

    /// Returns the greatest length of the shape along u or v, as large as the picture shows lengths
    /// at the distance of its middle, in units of the picture's smaller edge.
    [[nodiscard]] float LengthAlongU() const;
    [[nodiscard]] float LengthAlongV() const;

    /// In the space of the shape, a point has the x and z of its column times the radius of its
    /// row, and the height of its row as y. Sphere and torus are surfaces of revolution around the
    /// y axis; the rows of the square have radius 1.

    /// The values that all points with the same `u` share.
    struct Column {
        float x;
        float z;
        float xByU;  // derivatives by u, divided by `LengthOfU`
        float zByU;
    };
    /// The values that all points with the same `v` share.
    struct Row {
        float radius;  // on a sphere or torus, the distance from the y axis
        float height;
        float radiusByV;  // derivatives by v
        float heightByV;
    };
    [[nodiscard]] Column ColumnAt(float u) const;
    [[nodiscard]] Row RowAt(float v) const;
    /// Returns the length of a row of radius 1.
    [[nodiscard]] float LengthOfU() const;

    /// True if only the side that the normals point to is visible, unless points are displaced.
    [[nodiscard]] bool IsClosed() const { return m_kind != SqxShapeKind::Square; }

    /// A position in the picture: x and y from -1 to 1 span its smaller edge, y points up.
    struct Projected {
        float x;
        float y;
        float z;  // depth; negative if the camera faces away from the position
    };
    [[nodiscard]] static Projected Project(const QxVector3& place);
    /// Returns the projection as a matrix. In its target space, the middle of the picture is at the
    /// x and y of `middle`, and half the picture's smaller edge is `half.x` wide or `half.y` high.
    [[nodiscard]] static QxMatrix44 Projection(const QxVector3& middle, const QxVector3& half);

private:
    SqxShapeKind m_kind;
    QxMatrix44 m_toCurrent;
};

/// Computes `dPdu`, `dPdv`, `Ng` and `I` from the positions of the points.
void SqxDeriveGeometry(QxHostGrid& grid);
