#pragma once

#include <map>
#include <memory>
#include <string>

#include "host/QxHost.h"
#include "picture/SqxTexture.h"

using Textures = std::map<std::string, std::shared_ptr<const SqxTexture>, std::less<>>;

/// Answers the questions of shaders about pictures: textures and maps of the surroundings.
class TextureScene : public QxHostScene {
public:
    /// `textures`, by the names that shaders use, must outlive the scene.
    explicit TextureScene(const Textures& textures) : m_textures(textures) {}

    QxRGBColor Texture(const QxTextureQuery& query) override;
    QxRGBColor Environment(const QxPointsQuery& query) override;

private:
    [[nodiscard]] const SqxTexture* Find(const char* name) const;

    const Textures& m_textures;
};

/// Returns the query for the part of a map of the surroundings between four directions, with widths
/// of 1 and all other options 0.
[[nodiscard]] QxTextureQuery QueryAround(const QxVector3 (&directions)[4]);
