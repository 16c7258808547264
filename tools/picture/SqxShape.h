#pragma once

#include "host/QxHostGrid.h"
#include "picture/SqxPictureSettings.h"

/// The shape to shade and how the camera sees it.
///
/// The camera is at the origin of the current space and looks along z. The shape's middle is
/// `k_distance` away; its own space is turned so that more than one side of a sphere shows.
class SqxShape {
public:
    static constexpr float k_distance = 5;

    explicit SqxShape(SqxShapeKind kind);

    /// From the shape's own space to the current one, and from that around its middle.
    [[nodiscard]] const QxMatrix44& ToCurrent() const { return m_toCurrent; }
    [[nodiscard]] static QxMatrix44 WorldToCurrent();

    /// How often the side of the picture's smaller edge goes into the shape along u and v.
    [[nodiscard]] float LengthAlongU() const;
    [[nodiscard]] float LengthAlongV() const;

    /// In its own space a place of the shape has the x and z of its column, times the radius of its
    /// row, and the row's height: sphere and torus are made by a curve, the rows, that turns around
    /// the y axis, and the rows of the square have radius 1.

    /// What all points of one `u` have in common.
    struct Column {
        float x;
        float z;
        float xByU;  // the derivatives, in parts of `LengthOfU`
        float zByU;
    };
    /// What all points of one `v` have in common.
    struct Row {
        float radius;  // distance from the axis
        float height;
        float radiusByV;  // the derivatives
        float heightByV;
    };
    [[nodiscard]] Column ColumnAt(float u) const;
    [[nodiscard]] Row RowAt(float v) const;
    /// How long a row of radius 1 is.
    [[nodiscard]] float LengthOfU() const;

    /// Nothing shows the side from which its normals lead away, until something moves its points.
    [[nodiscard]] bool IsClosed() const { return m_kind != SqxShapeKind::Square; }

    /// A place on the picture: x and y from -1 to 1 span its smaller edge, y leads up.
    struct Projected {
        float x;
        float y;
        float z;  // distance; what is not in front of the camera has none above 0
    };
    [[nodiscard]] static Projected Project(const QxVector3& place);
    /// The same as a matrix, into a space where the middle of the picture is at x and y of
    /// `middle`, and half its smaller edge is as long as x and y of `half`.
    [[nodiscard]] static QxMatrix44 Projection(const QxVector3& middle, const QxVector3& half);

private:
    SqxShapeKind m_kind;
    QxMatrix44 m_toCurrent;
};

/// Sets what follows from the places of the points: `dPdu`, `dPdv`, `Ng` and `I`.
void SqxDeriveGeometry(QxHostGrid& grid);
