// Checks grids that are drawn on a film: which samples they cover, which grid is visible, and how
// samples become pixels.

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "picture/SqxFilm.h"
#include "picture/SqxShape.h"

namespace {

constexpr unsigned int k_side = 160;  // more rows than one lock covers

/// Returns the point at depth z that is seen at x and y on a film of `k_side` samples along each
/// edge.
QxVector3 SeenAt(float x, float y, float z)
{
    const float scale = SqxShape::Project({1, 0, z}).x * k_side / 2;
    return {(x - k_side / 2.0F) / scale, (k_side / 2.0F - y) / scale, z};
}

/// Returns a white grid at depth z whose cells, except for the margin, cover the square from `low`
/// to `high` on the film.
QxHostGrid Spanned(unsigned int cells, float low, float high, float z)
{
    QxHostGrid grid(cells + 3, cells + 3);
    const float step = (high - low) / static_cast<float>(cells);
    for (std::size_t i = 0; i < grid.Size(); ++i) {
        const auto column = static_cast<float>(i % (cells + 3));
        const std::size_t rowNumber = i / (cells + 3);
        const auto row = static_cast<float>(rowNumber);
        grid.Values<QxVector3>("P")[i] =
            SeenAt(low + (column - 1) * step, low + (row - 1) * step, z);
    }
    grid.Set("Ci", QxRGBColor{1, 1, 1});
    grid.Set("Oi", QxRGBColor{1, 1, 1});
    return grid;
}

SqxPixels PixelsOf(QxHostGrid& grid, SqxMesh::Sides sides = SqxMesh::Sides::Both)
{
    SqxFilm film(k_side, k_side, 1);
    film.Draw(grid, 0, sides);
    return film.Finish(1);
}

std::size_t CountDrawn(const SqxPixels& pixels)
{
    return static_cast<std::size_t>(
        std::count_if(pixels.opacities.begin(), pixels.opacities.end(),
                      [](const QxRGBColor& opacity) { return opacity.r > 0.5F; }));
}

}  // namespace

// Inner points are moved at random, and of large cells some to the center of a sample, so that
// edges pass through centers.
TEST(SqxFilm, OmitsNoSampleBetweenCells)
{
    for (const unsigned int cells : {7U, 60U, 200U}) {
        QxHostGrid grid = Spanned(cells, 10, 150, 5);
        std::mt19937 random(cells);
        const float step = 140.0F / static_cast<float>(cells);
        std::uniform_real_distribution<float> shift(-0.3F * step, 0.3F * step);
        for (unsigned int row = 2; row <= cells; ++row)
            for (unsigned int column = 2; column <= cells; ++column) {
                float x = 10 + static_cast<float>(column - 1) * step + shift(random);
                float y = 10 + static_cast<float>(row - 1) * step + shift(random);
                if (random() % 3 == 0 && step > 2) {
                    x = std::floor(x) + 0.5F;
                    y = std::floor(y) + 0.5F;
                }
                grid.Values<QxVector3>("P")[row * (cells + 3) + column] = SeenAt(x, y, 5);
            }
        const SqxPixels pixels = PixelsOf(grid);
        for (unsigned int i = 0; i < k_side * k_side; ++i) {
            const unsigned int x = i % k_side;
            const unsigned int y = i / k_side;
            const bool isWithin = x >= 10 && x < 150 && y >= 10 && y < 150;
            ASSERT_NEAR(pixels.opacities[i].r, isWithin ? 1 : 0, 1e-5F)
                << cells << ": " << x << " " << y;
        }
    }
}

TEST(SqxFilm, MixesColorsBetweenPoints)
{
    QxHostGrid grid = Spanned(9, 0, k_side, 5);
    for (std::size_t i = 0; i < grid.Size(); ++i) {
        const auto place = SqxShape::Project(grid.Values<QxVector3>("P")[i]);
        grid.Values<QxRGBColor>("Ci")[i] = {place.x, place.y, place.x + place.y};
        grid.Values<QxRGBColor>("Oi")[i] = {1, place.x, place.y};
    }
    const SqxPixels pixels = PixelsOf(grid);
    for (unsigned int i = 0; i < k_side * k_side; ++i) {
        const float x = (static_cast<float>(i % k_side) + 0.5F) * 2 / k_side - 1;
        const unsigned int row = i / k_side;
        const float y = 1 - (static_cast<float>(row) + 0.5F) * 2 / k_side;
        const float expected[] = {x, y, x + y, 1, x, y};
        for (int channel = 0; channel < 3; ++channel) {
            ASSERT_NEAR(pixels.colors[i][channel], expected[channel], 1e-4F) << i;
            ASSERT_NEAR(pixels.opacities[i][channel], expected[channel + 3], 1e-4F) << i;
        }
    }
}

TEST(SqxFilm, ShowsTheNearestInAnyOrder)
{
    QxHostGrid far = Spanned(20, 0, k_side, 6);
    QxHostGrid near = Spanned(30, 40, 120, 5);
    QxHostGrid same = Spanned(30, 40, 120, 5);
    near.Set("Ci", QxRGBColor{0.5F, 0, 0});
    same.Set("Ci", QxRGBColor{0, 0.5F, 0});
    struct Drawn {
        QxHostGrid* grid;
        unsigned int number;
    };
    const Drawn near1 = {&near, 1};
    const Drawn same2 = {&same, 2};
    const Drawn far0 = {&far, 0};
    for (const auto& order : {std::vector{near1, same2, far0}, std::vector{far0, same2, near1},
                              std::vector{same2, far0, near1}}) {
        SqxFilm film(k_side, k_side, 1);
        for (const auto& [grid, number] : order)
            film.Draw(*grid, number, SqxMesh::Sides::Both);
        const SqxPixels pixels = film.Finish(2);
        EXPECT_EQ(pixels.colors[20 * k_side + 20].r, 1) << "far";
        EXPECT_NEAR(pixels.colors[80 * k_side + 80].r, 0.5F, 1e-5F) << "near, of the lower number";
        EXPECT_EQ(pixels.colors[80 * k_side + 80].g, 0);
    }
}

TEST(SqxFilm, OmitsInnerSidesIfAsked)
{
    QxHostGrid outer = Spanned(20, 10, 150, 5);
    EXPECT_EQ(CountDrawn(PixelsOf(outer, SqxMesh::Sides::Outer)), 140U * 140);
    QxHostGrid inner = Spanned(20, 10, 150, 5);
    for (QxVector3& place : inner.Values<QxVector3>("P"))
        place.x = -place.x;
    EXPECT_EQ(CountDrawn(PixelsOf(inner)), 140U * 140);
    EXPECT_EQ(CountDrawn(PixelsOf(inner, SqxMesh::Sides::Outer)), 0U);
}

// An invalid point removes the triangles that it is a corner of, and no others.
TEST(SqxFilm, OmitsPointsWithoutAPosition)
{
    constexpr float k_infinity = std::numeric_limits<float>::infinity();
    const QxVector3 nowhere[] = {
        {std::nanf(""), 0, 5}, {0, std::nanf(""), 5}, {0, 0, std::nanf("")}, {k_infinity, 0, 5},
        {0, -k_infinity, 5},   {0, 0, k_infinity},    {0.1F, 0.1F, 0},       {0.1F, 0.1F, -5}};
    for (const QxVector3& place : nowhere) {
        QxHostGrid grid = Spanned(14, 10, 150, 5);  // cells of 10 times 10 samples
        grid.Values<QxVector3>("P")[8 * 17 + 8] = place;
        const std::size_t drawn = CountDrawn(PixelsOf(grid));
        EXPECT_NEAR(static_cast<double>(drawn), 140 * 140 - 6 * 50, 40)
            << place.x << " " << place.y << " " << place.z;
    }
    QxHostGrid grid = Spanned(14, 10, 150, 5);
    for (QxVector3& place : grid.Values<QxVector3>("P"))
        place = place * 1e30F;
    EXPECT_EQ(CountDrawn(PixelsOf(grid)), 140U * 140) << "far off, and as large";
}

TEST(SqxFilm, AveragesTheSamplesOfAPixel)
{
    constexpr unsigned int k_samples = 4;
    SqxFilm film(k_side / k_samples, k_side / k_samples, k_samples);
    QxHostGrid grid = Spanned(10, 2, 158, 5);
    grid.Set("Ci", QxRGBColor{0.4F, 0.8F, 1});
    film.Draw(grid, 0, SqxMesh::Sides::Both);
    const SqxPixels pixels = film.Finish(3);
    ASSERT_EQ(pixels.width, 40U);
    ASSERT_EQ(pixels.colors.size(), 40U * 40);
    struct Case {
        std::size_t pixel;
        float covered;
    };
    for (const auto& [pixel, covered] : {Case{0, 0.25F}, Case{20, 0.5F}, Case{20 * 40 + 20, 1}}) {
        EXPECT_NEAR(pixels.opacities[pixel].r, covered, 1e-5F) << pixel;
        EXPECT_NEAR(pixels.colors[pixel].g, 0.8F * covered, 1e-5F) << pixel;
    }
}
