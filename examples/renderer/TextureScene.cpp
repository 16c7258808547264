// A map of the surroundings is looked up like a texture that is wrapped around the scene.

#include "TextureScene.h"

#include <cmath>

#include "Shapes.h"

QxTextureQuery QueryAround(const QxVector3 (&directions)[4])
{
    QxTextureQuery query = {};
    query.sWidth = query.tWidth = 1;
    for (int i = 0; i < 4; ++i) {
        const auto [s, t] = SphereParameters(QxNormalize(directions[i]));
        query.s[i] = i == 0 ? s : s + std::round(query.s[0] - s);  // on one side of the seam
        query.t[i] = t;
    }
    return query;
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
    QxTextureQuery around = QueryAround(query.points);
    around.channel = query.channel;
    around.fill = query.fill;
    around.sWidth = query.sWidth;
    around.tWidth = query.tWidth;
    around.sBlur = query.sBlur;
    around.tBlur = query.tBlur;
    return texture->Look(around);
}
