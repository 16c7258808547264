// The list of lights of a scene, in the order in which they were added. When a grid begins, the
// scene stores pointers to the lights that light the object of the grid, so the list must not
// change while a grid is shaded.
//
// Tested by tests/host/HostSceneTest.cpp.

#include <algorithm>

#include "QxHostError.h"
#include "host/QxHostScene.h"
#include "host/QxShaderInstance.h"

namespace {

/// True if an ambient light shader returns the same light at all points, unless it draws random
/// numbers: it runs on a grid of one point, and only `Ps`, the lit position, differs between runs.
bool IsUniform(const QxShaderInstance& light)
{
    return !light.Shader().Uses("Ps");
}

}  // namespace

bool QxHostScene::SceneLight::Illuminates(const QxHostObject* object) const
{
    if (!on)
        return false;
    if (categories.empty())
        return true;
    return object && std::any_of(categories.begin(), categories.end(), [&](const auto& category) {
               const auto& ofObject = object->categories;
               return std::find(ofObject.begin(), ofObject.end(), category) != ofObject.end();
           });
}

void QxHostScene::CheckBetweenGrids() const
{
    if (m_depth > 0)
        throw QxHostError("Lights do not change while a grid is shaded");
}

QxLightHandle QxHostScene::Add(SceneLight light)
{
    CheckBetweenGrids();
    light.handle = static_cast<QxLightHandle>(++m_lastLight);
    m_lights.push_back(std::move(light));
    return m_lights.back().handle;
}

QxLightHandle QxHostScene::AddAmbientLight(const QxRGBColor& color)
{
    return Add({SceneLight::Kind::Ambient, {}, {}, color, nullptr, true, true, {}});
}

QxLightHandle QxHostScene::AddPointLight(const QxVector3& position, const QxRGBColor& color)
{
    return Add({SceneLight::Kind::Point, {}, position, color, nullptr, false, true, {}});
}

QxLightHandle QxHostScene::AddDistantLight(const QxVector3& direction, const QxRGBColor& color)
{
    return Add({SceneLight::Kind::Distant, {}, direction, color, nullptr, false, true, {}});
}

QxLightHandle QxHostScene::AddLight(QxShaderInstance& light)
{
    if (light.Shader().Type() != QxShaderInterface::e_typeLight)
        throw QxHostError("Shader '" + light.Shader().Name() + "' is no light shader");
    const auto kind =
        light.Shader().IsAmbient() ? SceneLight::Kind::AmbientShader : SceneLight::Kind::Shader;
    return Add({kind, {}, {}, {}, &light, IsUniform(light), true, {}});
}

QxHostScene::SceneLight& QxHostScene::FindLight(QxLightHandle handle)
{
    CheckBetweenGrids();
    const auto found = std::find_if(m_lights.begin(), m_lights.end(), [&](const SceneLight& light) {
        return light.handle == handle;
    });
    if (found == m_lights.end())
        throw QxHostError("The scene has no such light any more");
    return *found;
}

void QxHostScene::RemoveLight(QxLightHandle light)
{
    m_lights.erase(m_lights.begin() + (&FindLight(light) - m_lights.data()));
}

void QxHostScene::SwitchLight(QxLightHandle light, bool on)
{
    FindLight(light).on = on;
}

void QxHostScene::LimitLight(QxLightHandle light, std::vector<std::string> categories)
{
    FindLight(light).categories = std::move(categories);
}

unsigned int QxHostScene::LightCount() const
{
    if (m_depth > 0)
        return static_cast<unsigned int>(m_levels[m_depth - 1]->lights.size());
    return static_cast<unsigned int>(
        std::count_if(m_lights.begin(), m_lights.end(), [](const SceneLight& light) {
            return !light.IsAmbient() && light.Illuminates(nullptr);
        }));
}

std::optional<QxLightHandle> QxHostScene::RunningLight() const
{
    if (m_depth == 0 || !m_levels[m_depth - 1]->running)
        return std::nullopt;
    return m_levels[m_depth - 1]->running->handle;
}
