#pragma once

#include <memory>
#include <string>
#include <vector>

#include "QxShaderSupport.h"
#include "picture/SqxFour.h"
#include "picture/SqxPng.h"

/// A picture for look-ups by shaders: in full size, and repeatedly halved down to one pixel. It
/// repeats beyond its edges. s grows to the right, t downward.
class SqxTexture {
public:
    explicit SqxTexture(SqxImage image);
    /// Reads a PNG file. Throws `SqxPictureError` if it cannot be read or is too large.
    [[nodiscard]] static std::shared_ptr<const SqxTexture> Read(const std::string& path);

    /// Returns an approximate mean of three channels, from `query.channel` on, over the patch of
    /// the query. Returns `query.fill` for channels that do not exist and for patches that are not
    /// finite.
    [[nodiscard]] QxRGBColor Look(const QxTextureQuery& query) const;
    /// As above for each query of a grid.
    void Look(const QxGridQueries<QxTextureQuery>& asked, QxRGBColor* results) const;

private:
    [[nodiscard]] static SqxFour Bilinear(const SqxImage& level, float s, float t);

    std::vector<SqxImage> m_levels;  // the full size first
};
