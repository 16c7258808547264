#pragma once

#include "host/QxHostGrid.h"
#include "picture/SqxPictureSettings.h"

/// The shape to shade and how the camera sees it.
///
/// The camera stands in the origin of the current space and looks along z. The shape's middle is
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

    /// Sets places, normals and parameters of the grid's points: its first has `u` and `v`, the
    /// others follow at these steps.
    void Place(QxHostGrid& grid, float u, float v, float du, float dv) const;

    /// None of the grid's points shows the camera its outer side.
    [[nodiscard]] bool IsTurnedAway(QxHostGrid& grid) const;

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
    // What all points of a column, or of a row, have in common. Sphere and torus are made by a
    // curve, the rows, that turns around the y axis.
    struct Column {
        float u;
        float sine;  // of the angle around the axis
        float cosine;
    };
    struct Row {
        float v;
        float radius;  // distance from the axis
        float height;
        float radiusByV;  // the derivatives
        float heightByV;
    };
    struct Point {
        QxVector3 place;
        QxVector3 alongU;  // the derivatives by u and v
        QxVector3 alongV;
    };
    [[nodiscard]] static Column ColumnAt(float u);
    [[nodiscard]] Row RowAt(float v) const;
    [[nodiscard]] Point At(const Column& column, const Row& row) const;

    SqxShapeKind m_kind;
    QxMatrix44 m_toCurrent;
};

/// Sets what follows from the places of the points: `dPdu`, `dPdv`, `Ng` and `I`.
void SqxDeriveGeometry(QxHostGrid& grid);
