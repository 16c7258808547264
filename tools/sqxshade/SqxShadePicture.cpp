#include "sqxshade/SqxShadePicture.h"

#include <algorithm>
#include <cmath>
#include <limits>

SqxShadePicture::SqxShadePicture(unsigned int width, unsigned int height, unsigned int samples)
    : m_width(width),
      m_height(height),
      m_samples(samples),
      m_columns(static_cast<int>(width * samples)),
      m_rows(static_cast<int>(height * samples)),
      m_buffer(static_cast<std::size_t>(m_columns) * m_rows,
               {std::numeric_limits<float>::infinity(), {0, 0, 0}, {0, 0, 0}})
{
}

std::vector<SqxShadePicture::Corner> SqxShadePicture::CornersOf(QxHostGrid& grid) const
{
    const auto P = grid.Values<QxVector3>("P");
    const auto Ci = grid.Values<QxRGBColor>("Ci");
    const auto Oi = grid.Values<QxRGBColor>("Oi");
    const auto columns = static_cast<float>(m_columns);
    const auto rows = static_cast<float>(m_rows);
    const float unit = std::min(columns, rows) / 2;
    std::vector<Corner> corners;
    corners.reserve(grid.Size());
    for (std::size_t i = 0; i < grid.Size(); ++i) {
        const auto place = SqxShadeShape::Project(P[i]);
        corners.push_back(
            {columns / 2 + place.x * unit, rows / 2 - place.y * unit, place.z, Ci[i], Oi[i]});
    }
    return corners;
}

void SqxShadePicture::Draw(QxHostGrid& grid)
{
    const std::vector<Corner> corners = CornersOf(grid);
    const std::size_t columns = grid.Layout().columns;
    for (std::size_t row = 1; row + 2 < grid.Layout().rows; ++row)
        for (std::size_t column = 1; column + 2 < columns; ++column) {
            const Corner* first = &corners[row * columns + column];
            DrawTriangle(first[0], first[1], first[columns]);
            DrawTriangle(first[1], first[columns + 1], first[columns]);
        }
}

/// By the barycentric coordinates of each sample in the triangle's bounds.
void SqxShadePicture::DrawTriangle(const Corner& a, const Corner& b, const Corner& c)
{
    constexpr float k_nearest = 0.01F;
    const float area = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
    if (!(a.z > k_nearest && b.z > k_nearest && c.z > k_nearest) || !std::isfinite(1 / area))
        return;
    const auto [left, right] = std::minmax({a.x, b.x, c.x});
    const auto [top, bottom] = std::minmax({a.y, b.y, c.y});
    // The middle of sample i is at i + 0.5. Corners may lie anywhere, also far beyond what an int
    // holds.
    const auto clamped = [](float place, int count) {
        return std::clamp(place - 0.5F, -1.0F, static_cast<float>(count));
    };
    const int firstColumn = std::max(0, static_cast<int>(std::ceil(clamped(left, m_columns))));
    const int firstRow = std::max(0, static_cast<int>(std::ceil(clamped(top, m_rows))));
    const int lastColumn =
        std::min(m_columns - 1, static_cast<int>(std::floor(clamped(right, m_columns))));
    const int lastRow = std::min(m_rows - 1, static_cast<int>(std::floor(clamped(bottom, m_rows))));
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
            if (z < sample.z)
                sample = {z, a.color * ofA + b.color * ofB + c.color * ofC,
                          a.opacity * ofA + b.opacity * ofB + c.opacity * ofC};
        }
}

void SqxShadePicture::Finish()
{
    const QxRGBColor nothing = {0, 0, 0};
    colors.assign(static_cast<std::size_t>(m_width) * m_height, nothing);
    opacities = colors;
    const float share = 1 / static_cast<float>(m_samples * m_samples);
    for (std::size_t i = 0; i < m_buffer.size(); ++i) {
        const std::size_t row = i / m_columns / m_samples;
        const std::size_t pixel = row * m_width + i % m_columns / m_samples;
        colors[pixel] = colors[pixel] + m_buffer[i].color * share;
        opacities[pixel] = opacities[pixel] + m_buffer[i].opacity * share;
    }
}
