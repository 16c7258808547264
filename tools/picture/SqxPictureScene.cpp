// A scene that needs no files and shows what each type of shader does: a key light and weaker ones,
// a sky above a ground for reflections, and a checkerboard in place of a missing texture.
//
// Tested by tests/picture/SqxPictureTest.cpp.

#include "picture/SqxPictureScene.h"

#include <algorithm>
#include <cmath>

#include "QxLights.h"
#include "QxMatrixMath.h"
#include "picture/SqxTexture.h"

namespace {

// The place of light shaders, relative to the middle of the shape. The key light is farther away.
constexpr QxVector3 k_keyPlace = {-1, 1.15F, -1.55F};

/// Returns the color of the sky or the ground in a direction.
QxRGBColor Surroundings(const QxVector3& direction)
{
    const QxRGBColor zenith = {0.25F, 0.45F, 0.85F};
    const QxRGBColor horizon = {0.9F, 0.93F, 0.97F};
    const QxRGBColor ground = {0.3F, 0.24F, 0.18F};
    const float height = QxNormalize(direction).y;
    if (height < 0)
        return QxMix(horizon * 0.6F, ground, QxSmoothStep(0, 0.2F, -height));
    return QxMix(horizon, zenith, std::sqrt(height));
}

/// Returns the transform from the space of a light shader to world space.
QxMatrix44 LightToWorld()
{
    const QxVector3 z = QxNormalize(-k_keyPlace);
    const QxVector3 x = QxNormalize(QxCross({0, 1, 0}, z));
    const QxVector3 y = QxCross(z, x);
    return {{{x.x, x.y, x.z, 0},
             {y.x, y.y, y.z, 0},
             {z.x, z.y, z.z, 0},
             {k_keyPlace.x, k_keyPlace.y, k_keyPlace.z, 1}}};
}

QxVector3 FromWorld(const QxVector3& place)
{
    return place + QxVector3{0, 0, SqxShape::k_distance};
}

}  // namespace

SqxPictureScene::SqxPictureScene(const SqxPictureSettings& settings, const SqxShape& shape)
    : m_settings(settings)
{
    const auto columns = static_cast<float>(settings.width);
    const auto rows = static_cast<float>(settings.height);
    SetAnswer(QxMessage::Option, "Format", std::vector<float>{columns, rows, 1});
    Spaces().Define("camera", QxFrame3D());
    Spaces().Define("world", QxFrame3D(SqxShape::WorldToCurrent()));
    Spaces().Define("object", QxFrame3D(shape.ToCurrent()));
    Spaces().Define("shader", QxFrame3D(shape.ToCurrent()));
    DefinePictureSpaces(columns, rows);
}

void SqxPictureScene::PlaceLight(QxShaderInstance& light)
{
    light.Spaces().Define("shader", QxFrame3D(LightToWorld() * SqxShape::WorldToCurrent()));
}

void SqxPictureScene::DefinePictureSpaces(float width, float height)
{
    const auto define = [this](const char* name, const QxVector3& middle, const QxVector3& half) {
        Spaces().Define(name, QxFrame3D(QxInverse(SqxShape::Projection(middle, half))));
    };
    const float edge = std::min(width, height);
    define("screen", {0, 0, 0}, {1, 1, 0});
    define("raster", {width / 2, height / 2, 0}, {edge / 2, -edge / 2, 0});
    define("NDC", {0.5F, 0.5F, 0}, {edge / width / 2, -edge / height / 2, 0});
}

void SqxPictureScene::AddLights(const std::vector<SqxPictureLight>& lights)
{
    for (const SqxPictureLight& light : lights) {
        const QxRGBColor color = light.color * light.intensity;
        switch (light.kind) {
        case SqxPictureLight::Kind::Ambient:
            AddAmbientLight(color);
            break;
        case SqxPictureLight::Kind::Point:
            AddPointLight(FromWorld(light.from), color);
            break;
        case SqxPictureLight::Kind::Distant:
            AddDistantLight(light.to - light.from, color);
            break;
        }
    }
}

void SqxPictureScene::AddDefaultLights()
{
    AddPointLight(FromWorld(k_keyPlace * 3.2F), {0.86F, 0.84F, 0.81F});
    AddDistantLight({-1, 0, 0.3F}, {0.16F, 0.18F, 0.21F});
    AddAmbientLight({0.09F, 0.09F, 0.09F});
}

QxRGBColor SqxPictureScene::Texture(const QxTextureQuery& query)
{
    const auto found = m_settings.textures.find(std::string_view(query.name ? query.name : ""));
    if (found != m_settings.textures.end())
        return found->second->Look(query);
    float s = 0;
    float t = 0;
    for (int corner = 0; corner < 4; ++corner) {
        s += query.s[corner] / 4;
        t += query.t[corner] / 4;
    }
    const bool isEven = QxMod(std::floor(s * 8) + std::floor(t * 8), 2) < 0.5F;
    return isEven ? QxRGBColor{0.9F, 0.85F, 0.7F} : QxRGBColor{0.25F, 0.4F, 0.6F};
}

const void* SqxPictureScene::FindFile(QxFileKind kind, const char* name)
{
    if (kind != QxFileKind::Texture)
        return nullptr;
    const auto found = m_settings.textures.find(std::string_view(name));
    return found == m_settings.textures.end() ? nullptr : found->second.get();
}

void SqxPictureScene::TextureOverGrid(const QxGridQueries<QxTextureQuery>& asked,
                                      QxRGBColor* results)
{
    if (asked.file)
        static_cast<const SqxTexture*>(asked.file)->Look(asked, results);
    else
        QxHostScene::TextureOverGrid(asked, results);
}

std::vector<SqxNote> SqxPictureScene::TakeNotes()
{
    return std::exchange(m_notes, {});
}

QxRGBColor SqxPictureScene::Environment(const QxPointsQuery& query)
{
    return Surroundings(query.points[0] + query.points[1] + query.points[2] + query.points[3]);
}

QxRGBColor SqxPictureScene::Trace(const QxRayQuery& query, float& distance)
{
    distance = -1;
    return Surroundings(query.direction);
}

void SqxShadePlastic(QxHostGrid& grid, QxHostScene& scene)
{
    const QxHostScene::GridScope scope(scene, grid);
    const auto count = scene.LightCount();
    std::vector<QxVector3> L(grid.Size() * count);
    std::vector<QxRGBColor> Cl(grid.Size() * count);
    std::vector<QxRGBColor> Ol(grid.Size() * count);
    std::vector<QxLightInput> lights;
    for (std::size_t i = 0; i < count; ++i)
        lights.push_back(
            {L.data() + i * grid.Size(), Cl.data() + i * grid.Size(), Ol.data() + i * grid.Size()});
    const QxVector3* P = grid.Values<QxVector3>("P").data();
    scene.EvaluateLights(P, static_cast<unsigned int>(grid.Size()), lights.data(), count);

    const QxLights lit = {&scene, P, lights.data(), count};
    const QxAmbientCall ambient(lit);
    const QxDiffuseCall diffuse(lit);
    const QxSpecularCall specular(lit);
    const QxHiddenVariables at = grid.Hidden();
    for (unsigned int i = 0; i < grid.Size(); ++i) {
        const QxVector3 N = QxFaceForward(QxNormalize(at.N[i]), at.I[i], at.Ng[i]);
        const QxRGBColor body = at.Cs[i] * (ambient(i) + 0.75F * diffuse(i, N));
        const QxRGBColor coat = 0.25F * specular(i, N, -QxNormalize(at.I[i]), 0.05F);
        at.Oi[i] = at.Os[i];
        at.Ci[i] = at.Os[i] * (body + coat);
    }
}
