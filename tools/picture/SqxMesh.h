#pragma once

#include <cstdint>
#include <vector>

#include "host/QxHostGrid.h"

/// A sample of a film. All fields are zero until something is drawn on it.
struct SqxSample {
    QxRGBColor color;
    std::uint32_t nearness;  // grows as the distance shrinks
    QxRGBColor opacity;
    std::uint32_t number;  // of the grid that was drawn here
};

/// A shaded grid, projected to the raster of samples of a film. The cells between the grid's points
/// are drawn, except for a margin of one cell on each side. Colors are interpolated between points.
///
/// Each cell is two triangles. A sample is in a triangle if it is not on the outer side of any of
/// its edges (Pineda, "A parallel algorithm for polygon rasterization", 1988).
class SqxMesh {
public:
    /// A range of rows of samples, both ends included; empty if `last` is less than `first`.
    struct Rows {
        int first;
        int last;
    };

    /// Which sides of the cells are drawn.
    enum class Sides {
        Both,
        Outer,  // only cells with a triangle that shows the side that the normals point to
    };

    /// The grid must outlive the mesh; `number` identifies it. `columns` and `rows` are the size of
    /// the raster of samples.
    SqxMesh(QxHostGrid& grid, unsigned int number, Sides sides, int columns, int rows);

    /// Returns the rows that contain all samples of the cells.
    [[nodiscard]] Rows Reached() const;
    /// Draws the part of the mesh in these rows of samples, and replaces samples that are farther
    /// away. `samples` is the whole raster, row by row. At equal distance the grid with the lower
    /// number wins, so that the picture does not depend on the order of drawing.
    void Draw(SqxSample* samples, const Rows& rows);

private:
    /// For each cell of a row, the bounds of the samples that may be in it.
    struct Bounds {
        explicit Bounds(std::size_t cells) : left(cells), right(cells), top(cells), bottom(cells) {}

        std::vector<int> left;
        std::vector<int> right;
        std::vector<int> top;
        std::vector<int> bottom;
    };

    void Project();
    void FindBounds(std::size_t line, const Rows& rows);
    void LeaveOutInner(std::size_t line);
    [[nodiscard]] Rows ReachedBy(std::size_t line) const;

    QxGrid m_layout;
    QxHiddenVariables m_at;
    std::uint32_t m_number;
    Sides m_sides;
    int m_columns;
    int m_rows;
    std::vector<float> m_x;  // of each point, in samples
    std::vector<float> m_y;
    std::vector<float> m_z;     // its depth
    std::vector<float> m_tops;  // of each line of points
    std::vector<float> m_bottoms;
    std::vector<Rows> m_reachedBy;  // by line of cells, without the margin
    Bounds m_bounds;
};
