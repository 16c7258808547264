#pragma once

#include <cstdlib>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "picture/SqxMesh.h"

/// The pixels of a picture, rows from the top, linear.
struct SqxPixels {
    unsigned int width = 0;
    unsigned int height = 0;
    std::vector<QxRGBColor> colors;     // premultiplied by opacity
    std::vector<QxRGBColor> opacities;  // 0 where nothing was drawn
};

/// Draws shaded grids into a raster of samples that keeps the nearest surface, and computes the
/// pixels from it.
class SqxFilm {
public:
    /// Throws `std::bad_alloc` if there is no memory for so many samples.
    SqxFilm(unsigned int width, unsigned int height, unsigned int samples);

    /// Touches all memory of the film, so that the system provides it before grids are drawn. Call
    /// it before the first `Draw`.
    void Prepare();
    /// Draws the grid as an `SqxMesh`, which explains `number` and `sides`. Several threads may
    /// draw at a time, in any order of the grids.
    void Draw(QxHostGrid& grid, unsigned int number, SqxMesh::Sides sides);
    /// Returns the mean of the samples of each pixel. Uses up to `most` threads.
    [[nodiscard]] SqxPixels Finish(std::size_t most) const;

private:
    struct Free {
        void operator()(SqxSample* samples) const { std::free(samples); }
    };

    void Finish(SqxPixels& pixels, std::size_t firstRow, std::size_t endRow) const;
    /// Returns color and opacity of the pixel whose first sample is `first`.
    [[nodiscard]] std::pair<QxRGBColor, QxRGBColor> Mean(const SqxSample* first) const;

    unsigned int m_width;
    unsigned int m_height;
    unsigned int m_samples;
    int m_columns;  // of samples
    int m_rows;
    std::unique_ptr<SqxSample[], Free> m_buffer;
    std::unique_ptr<std::mutex[]> m_bands;  // one for each band of rows of samples
};
