// A map of the surroundings is looked up like a texture that was wound around the scene.

#include "TextureScene.h"

#include <cmath>

#include "QxGeometry.h"

namespace {

/// The query of the four directions, which must not lie on both sides of the map's seam.
QxTextureQuery AroundQuery(const QxVector3 (&directions)[4])
{
    QxTextureQuery query = {};
    query.sWidth = 1;
    query.tWidth = 1;
    for (int i = 0; i < 4; ++i) {
        const auto [s, t] = SphereParameters(QxNormalize(directions[i]));
        query.s[i] = s + std::round(query.s[0] - s) * static_cast<float>(i != 0);
        query.t[i] = t;
    }
    return query;
}

}  // namespace

QxRGBColor LookAround(const SqxTexture& map, const QxVector3& direction)
{
    return map.Look(AroundQuery({direction, direction, direction, direction}));
}

const SqxTexture* TextureScene::Find(const char* name) const
{
    const auto found = m_textures.find(std::string_view(name));
    return found == m_textures.end() ? nullptr : found->second.get();
}

QxRGBColor TextureScene::Texture(const QxTextureQuery& query)
{
    const SqxTexture* const texture = Find(query.name);
    return texture ? texture->Look(query) : QxHostScene::Texture(query);
}

QxRGBColor TextureScene::Environment(const QxPointsQuery& query)
{
    const SqxTexture* const texture = Find(query.name);
    if (!texture)
        return QxHostScene::Environment(query);
    QxTextureQuery around = AroundQuery(query.points);
    around.channel = query.channel;
    around.fill = query.fill;
    around.sWidth = query.sWidth;
    around.tWidth = query.tWidth;
    around.sBlur = query.sBlur;
    around.tBlur = query.tBlur;
    return texture->Look(around);
}
