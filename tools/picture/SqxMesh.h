#pragma once

#include <cstdint>
#include <vector>

#include "host/QxHostGrid.h"

/// A sample of a film. If all is zero, nothing was drawn on it.
struct SqxSample {
    QxRGBColor color;
    std::uint32_t nearness;  // the nearer, the higher
    QxRGBColor opacity;
    std::uint32_t number;  // of the grid
};

/// A shaded grid as a film sees it: cells between its points, but for a margin of one cell all
/// around, on a raster of samples. A sample between points takes the mixture of their colors.
///
/// A cell is two triangles, and a sample is within one if it is on the inner side of its three
/// edges (Pineda, "A parallel algorithm for polygon rasterization", 1988).
class SqxMesh {
public:
    /// Rows of samples: none if the last one comes before the first.
    struct Rows {
        int first;
        int last;
    };

    /// The sides of the cells that are drawn.
    enum class Sides {
        Both,
        Outer,  // the one from which the normals lead away
    };

    /// The grid must outlive the mesh, and its number identifies it. `columns` and `rows` are those
    /// of the samples.
    SqxMesh(QxHostGrid& grid, unsigned int number, Sides sides, int columns, int rows);

    /// All that the cells can reach.
    [[nodiscard]] Rows Reached() const;
    /// Draws the part in these rows, over samples behind it. `samples` is the whole raster, by
    /// rows. At equal distance, the grid of the lowest number wins.
    void Draw(SqxSample* samples, const Rows& rows);

private:
    /// The samples that a row of cells can reach, by cell.
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
    std::vector<float> m_z;     // its distance
    std::vector<float> m_tops;  // of each line of points
    std::vector<float> m_bottoms;
    std::vector<Rows> m_reachedBy;  // cells between a line of points and the next, from the second
    Bounds m_bounds;
};
