// A texture as a pyramid of pictures, of which the two are mixed whose pixels are about as large as
// the patch that is asked for.
//
// L. Williams, "Pyramidal parametrics", 1983; the level is that of the longer side of the patch in
// pixels. Ours departs from it where sides are odd: each pixel of a smaller picture is the mean of
// exactly the area that it covers.

#include "picture/SqxTexture.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr unsigned int k_channels = 4;

/// Shortens one direction to half: `count` lines of `length` pixels, which lie `step` apart, as the
/// lines lie `stride` apart.
struct Lines {
    unsigned int length;
    unsigned int count;
    std::size_t step;
    std::size_t stride;
};

/// The mean of the pixels that the new pixel `place` covers, each by its covered part.
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
    const Lines lines = {image.width, image.height, k_channels,
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
    const Lines lines = {image.height, image.width,
                         static_cast<std::size_t>(image.width) * k_channels, k_channels};
    float* result = half.values.data();
    for (unsigned int row = 0; row < half.height; ++row)
        for (unsigned int column = 0; column < half.width; ++column, result += k_channels)
            Cover(image.values.data() + column * lines.stride, lines, row, half.height, result);
    return half;
}

/// The place between two pixels, of which there are `count` in a circle.
struct Between {
    std::size_t first;
    std::size_t second;
    float part;  // of the second
};

Between FindBetween(float coordinate, unsigned int count)
{
    const float place = (coordinate - std::floor(coordinate)) * static_cast<float>(count) - 0.5F;
    const float below = std::floor(place);
    const auto first = static_cast<std::size_t>(below + static_cast<float>(count)) % count;
    return {first, (first + 1) % count, place - below};
}

float Extent(const float (&corners)[4])
{
    const auto [least, most] = std::minmax({corners[0], corners[1], corners[2], corners[3]});
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

SqxTexture::Texel SqxTexture::Bilinear(const SqxImage& level, float s, float t) const
{
    const Between column = FindBetween(s, level.width);
    const Between row = FindBetween(t, level.height);
    const auto at = [&](std::size_t x, std::size_t y) {
        return level.values.data() + (y * level.width + x) * k_channels;
    };
    const float* const corners[] = {at(column.first, row.first), at(column.second, row.first),
                                    at(column.first, row.second), at(column.second, row.second)};
    Texel result = {};
    for (unsigned int i = 0; i < k_channels; ++i) {
        const float upper = corners[0][i] + (corners[1][i] - corners[0][i]) * column.part;
        const float lower = corners[2][i] + (corners[3][i] - corners[2][i]) * column.part;
        result.channels[i] = upper + (lower - upper) * row.part;
    }
    return result;
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
    const float level = std::min(std::log2(std::max(pixels, 1.0F)), last);
    const auto finer = static_cast<std::size_t>(level);
    const float part = level - static_cast<float>(finer);
    Texel texel = Bilinear(m_levels[finer], s, t);
    if (part > 0) {
        const Texel coarser = Bilinear(m_levels[finer + 1], s, t);
        for (unsigned int i = 0; i < k_channels; ++i)
            texel.channels[i] += (coarser.channels[i] - texel.channels[i]) * part;
    }
    const auto channel = [&](float offset) {
        const float number = query.channel + offset;
        const bool isThere = number >= 0 && number < static_cast<float>(k_channels);
        return isThere ? texel.channels[static_cast<unsigned int>(number)] : query.fill;
    };
    return {channel(0), channel(1), channel(2)};
}
