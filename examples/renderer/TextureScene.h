#pragma once

#include "World.h"

/// Answers what shaders ask of pictures: a texture by its name, or a map of the surroundings.
class TextureScene : public QxHostScene {
public:
    /// `textures` must outlive the scene.
    explicit TextureScene(const Textures& textures) : m_textures(textures) {}

    QxRGBColor Texture(const QxTextureQuery& query) override;
    QxRGBColor Environment(const QxPointsQuery& query) override;

private:
    [[nodiscard]] const SqxTexture* Find(const char* name) const;

    const Textures& m_textures;
};

/// What a map of the surroundings shows in one direction.
[[nodiscard]] QxRGBColor LookAround(const SqxTexture& map, const QxVector3& direction);
