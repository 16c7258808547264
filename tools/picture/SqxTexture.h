#pragma once

#include <memory>
#include <string>
#include <vector>

#include "QxShaderSupport.h"
#include "picture/SqxFour.h"
#include "picture/SqxPng.h"

/// A picture in the form that shaders look it up in: whole, and smaller and smaller by halves down
/// to one pixel. It repeats beyond its edges; s leads to the right, t down.
class SqxTexture {
public:
    explicit SqxTexture(SqxImage image);
    /// Of a PNG file. Throws `SqxPictureError`.
    [[nodiscard]] static std::shared_ptr<const SqxTexture> Read(const std::string& path);

    /// The color of the query's patch, from its first channel on.
    [[nodiscard]] QxRGBColor Look(const QxTextureQuery& query) const;
    /// The same for the points of a grid.
    void Look(const QxGridQueries<QxTextureQuery>& asked, QxRGBColor* results) const;

private:
    [[nodiscard]] static SqxFour Bilinear(const SqxImage& level, float s, float t);

    std::vector<SqxImage> m_levels;  // the whole one first
};
