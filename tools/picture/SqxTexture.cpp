// A pyramid of pictures. A look-up blends the two whose pixels are about as large as the patch. If
// the patch is smaller than a pixel of the full size, only that picture is read.
//
// L. Williams, "Pyramidal parametrics", 1983. The longer side of the patch, in pixels, determines
// the level. Unlike there, a side may have an odd number of pixels: each pixel of the next smaller
// picture is the mean of exactly the area that it covers.

#include "picture/SqxTexture.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr unsigned int k_channels = 4;

/// A picture as lines of `length` pixels along the dimension to halve. In memory, pixels are `step`
/// values apart, and lines `stride` values.
struct Lines {
    unsigned int length;
    std::size_t step;
    std::size_t stride;
};

/// Computes pixel `place` of a line of `shorter` pixels: the mean of the pixels of `line` that it
/// covers, weighted by their covered parts.
void Cover(const float* line, const Lines& lines, unsigned int place, unsigned int shorter,
           float* result)
{
    const double scale = static_cast<double>(lines.length) / shorter;
    const double begin = place * scale;
    const double end = begin + scale;
    double sums[k_channels] = {};
    for (auto i = static_cast<unsigned int>(begin); i < lines.length && i < end; ++i) {
        const double part = std::min(end, i + 1.0) - std::max(begin, static_cast<double>(i));
        for (unsigned int channel = 0; channel < k_channels; ++channel)
            sums[channel] += part * static_cast<double>(line[i * lines.step + channel]);
    }
    for (unsigned int channel = 0; channel < k_channels; ++channel)
        result[channel] = static_cast<float>(sums[channel] / scale);
}

SqxImage HalfAsWide(const SqxImage& image)
{
    SqxImage half = {std::max(1U, image.width / 2), image.height, {}};
    half.values.resize(static_cast<std::size_t>(half.width) * half.height * k_channels);
    const Lines lines = {image.width, k_channels,
                         static_cast<std::size_t>(image.width) * k_channels};
    float* result = half.values.data();
    for (unsigned int row = 0; row < half.height; ++row)
        for (unsigned int column = 0; column < half.width; ++column, result += k_channels)
            Cover(image.values.data() + row * lines.stride, lines, column, half.width, result);
    return half;
}

SqxImage HalfAsHigh(const SqxImage& image)
{
    SqxImage half = {image.width, std::max(1U, image.height / 2), {}};
    half.values.resize(static_cast<std::size_t>(half.width) * half.height * k_channels);
    const Lines lines = {image.height, static_cast<std::size_t>(image.width) * k_channels,
                         k_channels};
    float* result = half.values.data();
    for (unsigned int row = 0; row < half.height; ++row)
        for (unsigned int column = 0; column < half.width; ++column, result += k_channels)
            Cover(image.values.data() + column * lines.stride, lines, row, half.height, result);
    return half;
}

/// The two pixels around a position.
struct Between {
    std::size_t first;
    std::size_t second;
    float part;  // weight of the second
};

/// Rounds down, without a call of a function if the number is small.
float WholeBelow(float value)
{
    constexpr float k_small = 1 << 22;
    if (!(std::abs(value) < k_small))
        return std::floor(value);
    const auto whole = static_cast<float>(static_cast<int>(value));
    return whole > value ? whole - 1 : whole;
}

/// Returns the pixels around a coordinate in a line of `count` pixels, which spans 0 to 1 and
/// repeats. `place` is at least -0.5 and at most half a pixel less than `count`, so comparisons
/// replace the remainder of a division.
Between FindBetween(float coordinate, unsigned int count)
{
    const float place = (coordinate - WholeBelow(coordinate)) * static_cast<float>(count) - 0.5F;
    const float below = WholeBelow(place);
    const std::size_t first = below < 0 ? count - 1 : static_cast<std::size_t>(below);
    return {first, first + 1 == count ? 0 : first + 1, place - below};
}

float Extent(const float (&corners)[4])
{
    const float least =
        std::min(std::min(corners[0], corners[1]), std::min(corners[2], corners[3]));
    const float most = std::max(std::max(corners[0], corners[1]), std::max(corners[2], corners[3]));
    return most - least;
}

float Middle(const float (&corners)[4])
{
    return (corners[0] + corners[1] + corners[2] + corners[3]) / 4;
}

}  // namespace

SqxTexture::SqxTexture(SqxImage image)
{
    m_levels.push_back(std::move(image));
    while (m_levels.back().width > 1 || m_levels.back().height > 1)
        m_levels.push_back(HalfAsHigh(HalfAsWide(m_levels.back())));
}

std::shared_ptr<const SqxTexture> SqxTexture::Read(const std::string& path)
{
    return std::make_shared<const SqxTexture>(SqxReadPng(path));
}

SqxFour SqxTexture::Bilinear(const SqxImage& level, float s, float t)
{
    const Between column = FindBetween(s, level.width);
    const Between row = FindBetween(t, level.height);
    const auto at = [&](std::size_t x, std::size_t y) {
        SqxFour texel;
        std::memcpy(&texel, level.values.data() + (y * level.width + x) * k_channels,
                    sizeof(texel));
        return texel;
    };
    const SqxFour upperLeft = at(column.first, row.first);
    const SqxFour lowerLeft = at(column.first, row.second);
    const SqxFour upper = upperLeft + (at(column.second, row.first) - upperLeft) * column.part;
    const SqxFour lower = lowerLeft + (at(column.second, row.second) - lowerLeft) * column.part;
    return upper + (lower - upper) * row.part;
}

QxRGBColor SqxTexture::Look(const QxTextureQuery& query) const
{
    const float s = Middle(query.s);
    const float t = Middle(query.t);
    const float width = Extent(query.s) * std::abs(query.sWidth) + std::abs(query.sBlur);
    const float height = Extent(query.t) * std::abs(query.tWidth) + std::abs(query.tBlur);
    const float pixels = std::max(width * static_cast<float>(m_levels[0].width),
                                  height * static_cast<float>(m_levels[0].height));
    if (!std::isfinite(s) || !std::isfinite(t) || !std::isfinite(pixels))
        return {query.fill, query.fill, query.fill};

    const auto last = static_cast<float>(m_levels.size() - 1);
    // The level of a small patch is 0 and needs no logarithm.
    const float level = pixels > 1 ? std::min(std::log2(pixels), last) : 0;
    const auto finer = static_cast<std::size_t>(level);
    const float part = level - static_cast<float>(finer);
    SqxFour texel = Bilinear(m_levels[finer], s, t);
    if (part > 0)
        texel += (Bilinear(m_levels[finer + 1], s, t) - texel) * part;
    if (query.channel == 0)
        return SqxColorOf(texel);
    const auto channel = [&](float offset) {
        const float number = query.channel + offset;
        const bool isThere = number >= 0 && number < static_cast<float>(k_channels);
        return isThere ? texel[static_cast<int>(number)] : query.fill;
    };
    return {channel(0), channel(1), channel(2)};
}

void SqxTexture::Look(const QxGridQueries<QxTextureQuery>& asked, QxRGBColor* results) const
{
    for (unsigned int i = 0; i < asked.count; ++i)
        results[i] = Look(asked.queries[i]);
}
