#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "picture/SqxShape.h"

/// The pixels of a picture, rows from the top, linear.
struct SqxPixels {
    unsigned int width = 0;
    unsigned int height = 0;
    std::vector<QxRGBColor> colors;     // times their opacity
    std::vector<QxRGBColor> opacities;  // 0 where nothing is
};

/// Shaded grids, drawn sample by sample, the nearest in front, and the pixels made of them.
class SqxFilm {
public:
    SqxFilm(unsigned int width, unsigned int height, unsigned int samples);

    /// Draws the cells between the grid's points, but for a margin of one cell all around. A
    /// sample between points takes the mixture of their colors. Several threads may draw at a
    /// time: of samples at one distance that of the grid of the lowest number stays.
    void Draw(QxHostGrid& grid, unsigned int number);
    /// The means of the samples of each pixel.
    [[nodiscard]] SqxPixels Finish() const;

private:
    struct Corner {
        float x;  // in samples
        float y;
        float z;
        QxRGBColor color;
        QxRGBColor opacity;
    };
    struct Sample {
        float z;
        unsigned int number;  // of its grid
        QxRGBColor color;
        QxRGBColor opacity;
    };
    struct Rows {
        int first;
        int last;
    };

    [[nodiscard]] std::vector<Corner> CornersOf(QxHostGrid& grid) const;
    [[nodiscard]] Rows RowsOf(const std::vector<Corner>& corners) const;
    void DrawRows(const std::vector<Corner>& corners, const QxGrid& layout, unsigned int number,
                  const Rows& rows);
    void DrawTriangle(const Corner& a, const Corner& b, const Corner& c, unsigned int number,
                      const Rows& rows);

    unsigned int m_width;
    unsigned int m_height;
    unsigned int m_samples;
    int m_columns;  // of samples
    int m_rows;
    std::vector<Sample> m_buffer;
    std::unique_ptr<std::mutex[]> m_bands;  // one for so many rows of samples
};
