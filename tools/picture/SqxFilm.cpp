// Triangles between shaded points, tested sample by sample against the nearest so far.
//
// Threads that draw lock bands of rows, one after the other, so that they meet seldom; a grid is
// drawn once for each band that it reaches into.

#include "picture/SqxFilm.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int k_bandRows = 64;

// Of numbers that an int holds; those of the library are calls.

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

/// The sample of which the middle is at a place or next to it. Places may lie anywhere, also far
/// beyond what an int holds, and be no numbers.
float Clamped(float place, int count)
{
    const float sample = place - 0.5F;
    const auto most = static_cast<float>(count);
    return sample > -1 ? (sample < most ? sample : most) : -1;
}

}  // namespace

SqxFilm::SqxFilm(unsigned int width, unsigned int height, unsigned int samples)
    : m_width(width),
      m_height(height),
      m_samples(samples),
      m_columns(static_cast<int>(width * samples)),
      m_rows(static_cast<int>(height * samples)),
      m_buffer(static_cast<std::size_t>(m_columns) * m_rows,
               {std::numeric_limits<float>::infinity(), 0, {0, 0, 0}, {0, 0, 0}}),
      m_bands(std::make_unique<std::mutex[]>(m_rows / k_bandRows + 1))
{
}

std::vector<SqxFilm::Corner> SqxFilm::CornersOf(QxHostGrid& grid) const
{
    const QxHiddenVariables at = grid.Hidden();
    const auto columns = static_cast<float>(m_columns);
    const auto rows = static_cast<float>(m_rows);
    const float unit = std::min(columns, rows) / 2;
    std::vector<Corner> corners;
    corners.reserve(grid.Size());
    for (std::size_t i = 0; i < grid.Size(); ++i) {
        const auto place = SqxShape::Project(at.P[i]);
        corners.push_back(
            {columns / 2 + place.x * unit, rows / 2 - place.y * unit, place.z, at.Ci[i], at.Oi[i]});
    }
    return corners;
}

/// All that the corners can reach. A corner that is no number reaches nothing.
SqxFilm::Rows SqxFilm::RowsOf(const std::vector<Corner>& corners) const
{
    Rows rows = {m_rows, -1};
    for (const Corner& corner : corners) {
        if (std::isnan(corner.y))
            continue;
        rows.first = std::min(rows.first, Floor(Clamped(corner.y, m_rows)));
        rows.last = std::max(rows.last, Ceiling(Clamped(corner.y, m_rows)));
    }
    return {std::max(rows.first, 0), std::min(rows.last, m_rows - 1)};
}

void SqxFilm::Draw(QxHostGrid& grid, unsigned int number)
{
    const std::vector<Corner> corners = CornersOf(grid);
    const Rows reached = RowsOf(corners);
    for (int row = reached.first; row <= reached.last;) {
        const int band = row / k_bandRows;
        const int end = std::min(reached.last, (band + 1) * k_bandRows - 1);
        const std::lock_guard lock(m_bands[band]);
        DrawRows(corners, grid.Layout(), number, {row, end});
        row = end + 1;
    }
}

void SqxFilm::DrawRows(const std::vector<Corner>& corners, const QxGrid& layout,
                       unsigned int number, const Rows& rows)
{
    const std::size_t columns = layout.columns;
    for (std::size_t row = 1; row + 2 < layout.rows; ++row)
        for (std::size_t column = 1; column + 2 < columns; ++column) {
            const Corner* first = &corners[row * columns + column];
            DrawTriangle(first[0], first[1], first[columns], number, rows);
            DrawTriangle(first[1], first[columns + 1], first[columns], number, rows);
        }
}

/// By the barycentric coordinates of each sample in the triangle's bounds.
void SqxFilm::DrawTriangle(const Corner& a, const Corner& b, const Corner& c, unsigned int number,
                           const Rows& rows)
{
    constexpr float k_nearest = 0.01F;
    const auto [top, bottom] = std::minmax({a.y, b.y, c.y});
    const int firstRow = std::max(rows.first, Ceiling(Clamped(top, m_rows)));
    const int lastRow = std::min(rows.last, Floor(Clamped(bottom, m_rows)));
    if (firstRow > lastRow)
        return;
    const auto [left, right] = std::minmax({a.x, b.x, c.x});
    const int firstColumn = std::max(0, Ceiling(Clamped(left, m_columns)));
    const int lastColumn = std::min(m_columns - 1, Floor(Clamped(right, m_columns)));
    if (firstColumn > lastColumn)
        return;
    const float area = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
    if (!(a.z > k_nearest && b.z > k_nearest && c.z > k_nearest) || !std::isfinite(1 / area))
        return;
    for (int row = firstRow; row <= lastRow; ++row)
        for (int column = firstColumn; column <= lastColumn; ++column) {
            const float x = static_cast<float>(column) + 0.5F;
            const float y = static_cast<float>(row) + 0.5F;
            const float ofB = ((x - a.x) * (c.y - a.y) - (c.x - a.x) * (y - a.y)) / area;
            const float ofC = ((b.x - a.x) * (y - a.y) - (x - a.x) * (b.y - a.y)) / area;
            const float ofA = 1 - ofB - ofC;
            if (ofA < 0 || ofB < 0 || ofC < 0)
                continue;
            Sample& sample = m_buffer[static_cast<std::size_t>(row) * m_columns + column];
            const float z = ofA * a.z + ofB * b.z + ofC * c.z;
            if (z < sample.z || (z == sample.z && number < sample.number))
                sample = {z, number, a.color * ofA + b.color * ofB + c.color * ofC,
                          a.opacity * ofA + b.opacity * ofB + c.opacity * ofC};
        }
}

SqxPixels SqxFilm::Finish() const
{
    SqxPixels pixels = {m_width, m_height, {}, {}};
    const QxRGBColor nothing = {0, 0, 0};
    pixels.colors.assign(static_cast<std::size_t>(m_width) * m_height, nothing);
    pixels.opacities = pixels.colors;
    const float share = 1 / static_cast<float>(m_samples * m_samples);
    std::size_t sample = 0;
    for (unsigned int row = 0; row < m_height * m_samples; ++row)
        for (unsigned int column = 0; column < m_width; ++column) {
            const std::size_t pixel = static_cast<std::size_t>(row / m_samples) * m_width + column;
            for (unsigned int i = 0; i < m_samples; ++i, ++sample) {
                pixels.colors[pixel] = pixels.colors[pixel] + m_buffer[sample].color * share;
                pixels.opacities[pixel] =
                    pixels.opacities[pixel] + m_buffer[sample].opacity * share;
            }
        }
    return pixels;
}
