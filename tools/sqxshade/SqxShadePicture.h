#pragma once

#include <vector>

#include "sqxshade/SqxShadeOptions.h"
#include "sqxshade/SqxShadeShape.h"

/// Shaded grids, drawn sample by sample, the nearest in front, and the pixels made of them.
class SqxShadePicture {
public:
    SqxShadePicture(unsigned int width, unsigned int height, unsigned int samples);

    /// Draws the cells between the grid's points, but for a margin of one cell all around. A
    /// pixel between points takes the mixture of their colors.
    void Draw(QxHostGrid& grid);
    /// Fills the pixels with the means of their samples.
    void Finish();

    // By pixel, rows from the top, once finished.
    std::vector<QxRGBColor> colors;     // times their opacity
    std::vector<QxRGBColor> opacities;  // 0 where nothing is

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
        QxRGBColor color;
        QxRGBColor opacity;
    };

    [[nodiscard]] std::vector<Corner> CornersOf(QxHostGrid& grid) const;
    void DrawTriangle(const Corner& a, const Corner& b, const Corner& c);

    unsigned int m_width;
    unsigned int m_height;
    unsigned int m_samples;
    int m_columns;  // of samples
    int m_rows;
    std::vector<Sample> m_buffer;
};
