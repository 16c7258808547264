// A thread that draws a grid locks one band of rows at a time and draws the cells in it, so that
// threads seldom wait for each other.
//
// The system provides memory when it is first touched, one page at a time; large pages make that
// fast. New pages are zero, which is the state of an empty film.
//
// Tested by tests/picture/SqxFilmTest.cpp.

#include "picture/SqxFilm.h"

#include <algorithm>
#include <new>
#include <sys/mman.h>
#include <thread>
#include <tuple>

#include "picture/SqxFour.h"

namespace {

constexpr int k_bandRows = 64;
constexpr std::size_t k_page = 4096;  // no system has smaller ones

/// Allocates samples that are zero. Throws `std::bad_alloc`.
SqxSample* AllocateSamples(std::size_t count)
{
    void* memory = std::calloc(count, sizeof(SqxSample));
    if (!memory)
        throw std::bad_alloc();
#ifdef MADV_HUGEPAGE
    // Only advice: the system uses small pages if it has no large ones.
    std::size_t size = count * sizeof(SqxSample);
    void* firstPage = memory;
    if (std::align(k_page, k_page, firstPage, size))
        (void)madvise(firstPage, size / k_page * k_page, MADV_HUGEPAGE);
#endif
    return static_cast<SqxSample*>(memory);
}

}  // namespace

SqxFilm::SqxFilm(unsigned int width, unsigned int height, unsigned int samples)
    : m_width(width),
      m_height(height),
      m_samples(samples),
      m_columns(static_cast<int>(width * samples)),
      m_rows(static_cast<int>(height * samples)),
      m_buffer(AllocateSamples(static_cast<std::size_t>(m_columns) * m_rows)),
      m_bands(std::make_unique<std::mutex[]>(m_rows / k_bandRows + 1))
{
}

/// Writing to each page is enough.
void SqxFilm::Prepare()
{
    constexpr std::size_t k_step = k_page / sizeof(SqxSample);
    const std::size_t count = static_cast<std::size_t>(m_columns) * m_rows;
    for (std::size_t i = 0; i < count; i += k_step)
        static_cast<volatile SqxSample&>(m_buffer[i]).number = 0;
}

void SqxFilm::Draw(QxHostGrid& grid, unsigned int number, SqxMesh::Sides sides)
{
    SqxMesh mesh(grid, number, sides, m_columns, m_rows);
    const SqxMesh::Rows reached = mesh.Reached();
    for (int row = reached.first; row <= reached.last;) {
        const int band = row / k_bandRows;
        const int end = std::min(reached.last, (band + 1) * k_bandRows - 1);
        const std::lock_guard lock(m_bands[band]);
        mesh.Draw(m_buffer.get(), {row, end});
        row = end + 1;
    }
}

SqxPixels SqxFilm::Finish(std::size_t most) const
{
    constexpr std::size_t k_rowsOfThread = 32;  // fewer rows are not worth a thread
    const std::size_t threads = std::min(most, m_height / k_rowsOfThread + 1);
    const std::size_t count = static_cast<std::size_t>(m_width) * m_height;
    SqxPixels pixels = {m_width, m_height, std::vector<QxRGBColor>(count),
                        std::vector<QxRGBColor>(count)};
    std::vector<std::jthread> workers;
    for (std::size_t i = 1; i < threads; ++i)
        workers.emplace_back([this, &pixels, i, threads] {
            Finish(pixels, m_height * i / threads, m_height * (i + 1) / threads);
        });
    Finish(pixels, 0, m_height / threads);
    workers.clear();
    return pixels;
}

void SqxFilm::Finish(SqxPixels& pixels, std::size_t firstRow, std::size_t endRow) const
{
    for (std::size_t row = firstRow; row < endRow; ++row)
        for (std::size_t column = 0; column < m_width; ++column) {
            const std::size_t pixel = row * m_width + column;
            std::tie(pixels.colors[pixel], pixels.opacities[pixel]) =
                Mean(&m_buffer[(row * m_columns + column) * m_samples]);
        }
}

std::pair<QxRGBColor, QxRGBColor> SqxFilm::Mean(const SqxSample* first) const
{
    const float share = 1 / static_cast<float>(m_samples * m_samples);
    SqxFour color = {};
    SqxFour opacity = {};
    for (std::size_t row = 0; row < m_samples; ++row)
        for (std::size_t column = 0; column < m_samples; ++column) {
            const SqxSample& sample = first[row * m_columns + column];
            color += SqxLoadFour(&sample.color) * share;
            opacity += SqxLoadFour(&sample.opacity) * share;
        }
    return {SqxColorOf(color), SqxColorOf(opacity)};
}
