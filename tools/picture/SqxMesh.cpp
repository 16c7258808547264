// Most cells are about as large as a sample, and many contain no sample. So the bounds of the
// samples that may be in each cell are computed for a whole row of cells, in loops that compile to
// vector instructions. Then each sample in the bounds is tested against the four outer edges of its
// cell at once, and against the diagonal. Only a sample that is inside needs a division.
//
// Two cells of a grid that share an edge test samples against it with its corners in the same
// order. They therefore agree on which side of the edge a sample is, and no sample between cells is
// missed.
//
// Points whose depth is negative, too small or infinite, and points so far away in the raster that
// products of their coordinates might overflow, get NaN for x. No comparison with NaN is true, so
// triangles with such a corner are not drawn, without a separate test.
//
// Tested by tests/picture/SqxFilmTest.cpp.

#include "picture/SqxMesh.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

#include "picture/SqxFour.h"
#include "picture/SqxShape.h"

namespace {

bool IsInRange(float x, float y, float z)
{
    constexpr float k_nearest = 0.01F;
    constexpr float k_farthest = std::numeric_limits<float>::max();
    constexpr float k_reach = 1e8F;
    return z > k_nearest && z <= k_farthest && std::abs(x) <= k_reach && std::abs(y) <= k_reach;
}

// If either number is NaN, these return the second one.

float Lower(float a, float b)
{
    return a < b ? a : b;
}

float Higher(float a, float b)
{
    return a > b ? a : b;
}

/// Returns the coordinate in units of samples, counted from the middle of the first sample, clamped
/// to the range from -1 to `count` so that it fits an int. `place` may be any number or NaN.
float Clamped(float place, float count)
{
    return Lower(Higher(place - 0.5F, -1), count);
}

// Rounding of clamped numbers, inline, since the functions of the library are calls.

int Ceiling(float number)
{
    const int whole = static_cast<int>(number);
    return whole + (number > static_cast<float>(whole) ? 1 : 0);
}

int Floor(float number)
{
    const int whole = static_cast<int>(number);
    return whole - (number < static_cast<float>(whole) ? 1 : 0);
}

/// Computes the first and the last sample between the corners of each cell of a row, in one
/// dimension and within `limits`. If there is none, the last one is less than the first.
void FindRanges(const float* corners, std::size_t columns, const SqxMesh::Rows& limits, float count,
                int* first, int* last)
{
    const float* next = corners + columns;
    const int least = limits.first;
    const int most = limits.last;
    for (std::size_t i = 0; i + 1 < columns; ++i) {
        const float low = Lower(Lower(corners[i], corners[i + 1]), Lower(next[i + 1], next[i]));
        const float high = Higher(Higher(corners[i], corners[i + 1]), Higher(next[i + 1], next[i]));
        first[i] = std::max(Ceiling(Clamped(low, count)), least);
        last[i] = std::min(Floor(Clamped(high, count)), most);
    }
}

/// Returns the nearness of a distance above 0. The bits of positive floats are in the order of the
/// floats.
std::uint32_t NearnessOf(float distance)
{
    constexpr auto k_farthest =
        std::bit_cast<std::uint32_t>(std::numeric_limits<float>::infinity());
    return k_farthest - std::bit_cast<std::uint32_t>(distance);
}

/// Loads {pair[0], pair[1], next[0], next[1]}.
SqxFour LoadPairs(const float* pair, const float* next)
{
    using Two [[gnu::vector_size(8)]] = float;
    Two first;
    Two second;
    std::memcpy(&first, pair, sizeof(first));
    std::memcpy(&second, next, sizeof(second));
    return __builtin_shufflevector(first, second, 0, 1, 2, 3);
}

/// The cells between two lines of points, and the raster that they are drawn to.
struct CellRow {
    const float* x;  // of the points in the first line
    const float* y;
    const float* z;
    const QxRGBColor* Ci;
    const QxRGBColor* Oi;
    std::size_t next;  // points from the first line to the second
    std::uint32_t number;
    SqxSample* samples;
    std::size_t width;  // of the raster

    struct Bounds {
        int left;
        int right;
        int top;
        int bottom;
    };
    void Draw(std::size_t column, const Bounds& bounds) const;

private:
    struct Triangle {
        std::size_t a;  // indices of the corners
        std::size_t b;
        std::size_t c;
        float area;  // twice the signed area; negative if the corners turn left
    };
    void Draw(SqxSample& sample, const Triangle& triangle, float ofB, float ofC) const;
};

/// The corners are `a` and `b` on one line, `c` and `d` on the next; the triangles are `abc` and
/// `bdc`.
inline void CellRow::Draw(std::size_t column, const Bounds& bounds) const
{
    const SqxFour cornersX = LoadPairs(x + column, x + column + next);
    const SqxFour cornersY = LoadPairs(y + column, y + column + next);
    // The outer edges are ab, ac, bd and cd, the diagonal is bc. An edge and a sample form a
    // triangle, and the sign of its area depends on the side of the edge that the sample is on.
    const SqxFour startX = __builtin_shufflevector(cornersX, cornersX, 0, 0, 1, 2);
    const SqxFour startY = __builtin_shufflevector(cornersY, cornersY, 0, 0, 1, 2);
    const SqxFour alongX = __builtin_shufflevector(cornersX, cornersX, 1, 2, 3, 3) - startX;
    const SqxFour alongY = __builtin_shufflevector(cornersY, cornersY, 1, 2, 3, 3) - startY;
    const float middleX = cornersX[2] - cornersX[1];
    const float middleY = cornersY[2] - cornersY[1];
    const Triangle abc = {column, column + 1, column + next,
                          alongX[0] * alongY[1] - alongX[1] * alongY[0]};
    const Triangle bdc = {column + 1, column + next + 1, column + next,
                          alongX[2] * middleY - middleX * alongY[2]};
    const SqxFour turns = {abc.area, -abc.area, bdc.area, -bdc.area};
    for (int row = bounds.top; row <= bounds.bottom; ++row) {
        const float sampleY = static_cast<float>(row) + 0.5F;
        for (int i = bounds.left; i <= bounds.right; ++i) {
            const float sampleX = static_cast<float>(i) + 0.5F;
            const SqxFour at = alongX * (sampleY - startY) - alongY * (sampleX - startX);
            const auto inside = std::bit_cast<std::array<std::uint64_t, 2>>(at * turns >= 0);
            const float side =
                middleX * (sampleY - cornersY[1]) - middleY * (sampleX - cornersX[1]);
            SqxSample& sample = samples[row * width + i];
            if (~inside[0] == 0 && side * abc.area >= 0)
                Draw(sample, abc, -at[1], at[0]);
            if (~inside[1] == 0 && side * bdc.area <= 0)
                Draw(sample, bdc, -side, at[2]);
        }
    }
}

/// Interpolates colors and opacities of the corners. `ofB` and `ofC` are the weights of two corners
/// times the area. Stores the result unless `sample` already has a nearer surface, or an equally
/// near one of this grid or a grid with a lower number.
inline void CellRow::Draw(SqxSample& sample, const Triangle& triangle, float ofB, float ofC) const
{
    const auto [a, b, c, area] = triangle;
    const float share = 1 / area;
    if (!std::isfinite(share))
        return;
    ofB *= share;
    ofC *= share;
    const float ofA = 1 - ofB - ofC;
    const std::uint32_t nearness = NearnessOf(ofA * z[a] + ofB * z[b] + ofC * z[c]);
    if (nearness < sample.nearness || (nearness == sample.nearness && number >= sample.number))
        return;
    // No corner is the last point of the grid, so another color follows that of each corner.
    const SqxFour color =
        SqxLoadFour(Ci + a) * ofA + SqxLoadFour(Ci + b) * ofB + SqxLoadFour(Ci + c) * ofC;
    const SqxFour opacity =
        SqxLoadFour(Oi + a) * ofA + SqxLoadFour(Oi + b) * ofB + SqxLoadFour(Oi + c) * ofC;
    std::memcpy(&sample, &color, sizeof(color));
    std::memcpy(reinterpret_cast<char*>(&sample) + sizeof(color), &opacity, sizeof(opacity));
    sample.nearness = nearness;
    sample.number = number;
}

}  // namespace

SqxMesh::SqxMesh(QxHostGrid& grid, unsigned int number, Sides sides, int columns, int rows)
    : m_layout(grid.Layout()),
      m_at(grid.Hidden()),
      m_number(number),
      m_sides(sides),
      m_columns(columns),
      m_rows(rows),
      m_x(grid.Size()),
      m_y(grid.Size()),
      m_z(grid.Size()),
      m_bounds(m_layout.columns)
{
    Project();
    for (std::size_t line = 1; line + 2 < m_layout.rows; ++line)
        m_reachedBy.push_back(ReachedBy(line));
}

void SqxMesh::Project()
{
    constexpr float k_nowhere = std::numeric_limits<float>::quiet_NaN();
    const auto columns = static_cast<float>(m_columns);
    const auto rows = static_cast<float>(m_rows);
    const float unit = std::min(columns, rows) / 2;
    std::size_t i = 0;
    for (unsigned int line = 0; line < m_layout.rows; ++line) {
        float top = rows;
        float bottom = 0;
        for (unsigned int column = 0; column < m_layout.columns; ++column, ++i) {
            const auto place = SqxShape::Project(m_at.P[i]);
            const float x = columns / 2 + place.x * unit;
            const float y = rows / 2 - place.y * unit;
            m_x[i] = IsInRange(x, y, place.z) ? x : k_nowhere;
            m_y[i] = y;
            m_z[i] = place.z;
            top = Lower(y, top);
            bottom = Higher(y, bottom);
        }
        m_tops.push_back(top);
        m_bottoms.push_back(bottom);
    }
}

SqxMesh::Rows SqxMesh::ReachedBy(std::size_t line) const
{
    const auto rows = static_cast<float>(m_rows);
    const float top = Lower(m_tops[line], m_tops[line + 1]);
    const float bottom = Higher(m_bottoms[line], m_bottoms[line + 1]);
    return {std::max(Ceiling(Clamped(top, rows)), 0),
            std::min(Floor(Clamped(bottom, rows)), m_rows - 1)};
}

SqxMesh::Rows SqxMesh::Reached() const
{
    Rows all = {m_rows, -1};
    for (const Rows& rows : m_reachedBy) {
        all.first = std::min(all.first, rows.first);
        all.last = std::max(all.last, rows.last);
    }
    return all;
}

void SqxMesh::Draw(SqxSample* samples, const Rows& rows)
{
    for (std::size_t line = 1; line + 2 < m_layout.rows; ++line) {
        const Rows& reached = m_reachedBy[line - 1];
        if (reached.first > rows.last || reached.last < rows.first)
            continue;
        FindBounds(line, rows);
        if (m_sides == Sides::Outer)
            LeaveOutInner(line);
        const std::size_t first = line * m_layout.columns;
        const CellRow cells = {
            &m_x[first],     &m_y[first],     &m_z[first],
            m_at.Ci + first, m_at.Oi + first, m_layout.columns,
            m_number,        samples,         static_cast<std::size_t>(m_columns)};
        const std::size_t end = m_layout.columns - 2;
        for (std::size_t column = 1; column < end; ++column) {
            const CellRow::Bounds bounds = {m_bounds.left[column], m_bounds.right[column],
                                            m_bounds.top[column], m_bounds.bottom[column]};
            if (bounds.left <= bounds.right && bounds.top <= bounds.bottom)
                cells.Draw(column, bounds);
        }
    }
}

void SqxMesh::FindBounds(std::size_t line, const Rows& rows)
{
    const std::size_t first = line * m_layout.columns;
    FindRanges(&m_x[first], m_layout.columns, {0, m_columns - 1}, static_cast<float>(m_columns),
               m_bounds.left.data(), m_bounds.right.data());
    FindRanges(&m_y[first], m_layout.columns, rows, static_cast<float>(m_rows), m_bounds.top.data(),
               m_bounds.bottom.data());
}

/// Empties the bounds of cells whose triangles both show their inner side, on which the corners
/// turn left.
void SqxMesh::LeaveOutInner(std::size_t line)
{
    const std::size_t columns = m_layout.columns;
    const float* x = &m_x[line * columns];
    const float* y = &m_y[line * columns];
    const float* nextX = x + columns;
    const float* nextY = y + columns;
    int* right = m_bounds.right.data();
    for (std::size_t i = 0; i + 1 < columns; ++i) {
        const float middleX = nextX[i] - x[i + 1];
        const float middleY = nextY[i] - y[i + 1];
        const float ofA = (x[i + 1] - x[i]) * middleY - middleX * (y[i + 1] - y[i]);
        const float ofD = (nextX[i + 1] - x[i + 1]) * middleY - middleX * (nextY[i + 1] - y[i + 1]);
        right[i] = Higher(ofA, ofD) > 0 ? right[i] : -1;
    }
}
