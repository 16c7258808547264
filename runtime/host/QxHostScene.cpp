// A light shader runs on a grid of its own whose `Ps` are the points that ask for light. Its `L`
// leads from the light to the point, the other way round than in the surface.
//
// An ambient light that looks at no place gives the same everywhere; it runs for one point a grid,
// when it is first asked for.
//
// An answer to a shader may shade another grid. What is known of a grid stands in a level of a
// stack, and answers look at the topmost one; levels are kept when their grids end, so that
// following rays needs no memory of the system once each depth was reached.
//
// Tested by tests/host/HostTest.cpp and tests/host/RecursionTest.cpp.

#include "host/QxHostScene.h"

#include <algorithm>

#include "QxHostError.h"
#include "QxMatrixMath.h"
#include "host/QxShaderInstance.h"

namespace {

/// The light that a light shader gives is the same for all points.
bool IsSteady(const QxShaderInstance& light)
{
    for (const char* name : {"P", "Ps", "N", "Ng", "u", "v", "s", "t", "dPdu", "dPdv", "I"})
        if (light.Shader().Uses(name))
            return false;
    return true;
}

}  // namespace

void QxHostScene::AddAmbientLight(const QxRGBColor& color)
{
    m_ambientColor = m_ambientColor + color;
}

void QxHostScene::AddPointLight(const QxVector3& position, const QxRGBColor& color)
{
    m_lights.push_back({position, false, color, nullptr});
}

void QxHostScene::AddDistantLight(const QxVector3& direction, const QxRGBColor& color)
{
    m_lights.push_back({direction, true, color, nullptr});
}

void QxHostScene::AddLight(QxShaderInstance& light)
{
    if (light.Shader().Type() != QxShaderInterface::e_typeLight)
        throw QxHostError("Shader '" + light.Shader().Name() + "' is no light shader");
    if (light.Shader().IsAmbient())
        m_ambientShaders.push_back({&light, IsSteady(light)});
    else
        m_lights.push_back({{}, false, {}, &light});
}

unsigned int QxHostScene::LightCount() const
{
    return static_cast<unsigned int>(m_lights.size());
}

void QxHostScene::SetAnswer(QxMessage message, const std::string& name, const QxHostValue& value)
{
    m_answers.insert_or_assign({message, name}, value);
}

QxHostScene::GridScope::GridScope(QxHostScene& scene, const QxHostPoints& points) : m_scene(scene)
{
    if (scene.m_depth > scene.m_rayLevelLimit)
        throw QxHostError("Rays are nested deeper than the limit of " +
                          std::to_string(scene.m_rayLevelLimit) + " levels");
    if (scene.m_depth == scene.m_levels.size())
        scene.m_levels.push_back(std::make_unique<Level>());
    Level& level = *scene.m_levels[scene.m_depth++];
    level.layout = points.layout;
    level.time = points.variables.time ? *points.variables.time : 0;
    level.eye = points.E;
    level.steadyAmbient.reset();
    level.inAmbient = false;
}

/// That of the grid that is being shaded; of none, if a host asks out of turn.
QxHostScene::Level& QxHostScene::CurrentLevel()
{
    if (m_levels.empty())
        m_levels.push_back(std::make_unique<Level>());
    return *m_levels[m_depth == 0 ? 0 : m_depth - 1];
}

/// Runs a light shader: from the place of its own space it lights the positions.
void QxHostScene::RunLight(Level& level, QxShaderInstance& light, QxHostGrid& grid,
                           const QxVector3* positions)
{
    const QxMatrix44& place = light.Spaces().Find("shader")->toCurrent;
    const QxHiddenVariables at = grid.Hidden();
    const std::size_t points = grid.Size();
    std::fill_n(at.P, points, QxVector3{place[3][0], place[3][1], place[3][2]});
    std::fill_n(at.L, points, QxVector3{0, 0, 0});
    std::fill_n(at.Cl, points, QxRGBColor{0, 0, 0});
    std::fill_n(at.Ol, points, QxRGBColor{1, 1, 1});
    std::copy_n(positions, points, at.Ps);
    *at.time = level.time;
    light.Shade({grid.Layout(), at, level.eye}, *this, 0);
}

void QxHostScene::EvaluateLights(const QxVector3* positions, unsigned int points,
                                 QxLightInput* lights, unsigned int count)
{
    Level& level = CurrentLevel();
    for (unsigned int i = 0; i < count && i < m_lights.size(); ++i) {
        const Light& light = m_lights[i];
        if (light.shader) {
            TakeLight(level, *light.shader, positions, points, lights[i]);
            continue;
        }
        QxVector3* L = lights[i].L;
        if (light.distant)
            std::fill_n(L, points, -light.place);
        else
            for (unsigned int point = 0; point < points; ++point)
                L[point] = light.place - positions[point];
        std::fill_n(lights[i].Cl, points, light.color);
        std::fill_n(lights[i].Ol, points, QxRGBColor{1, 1, 1});
    }
}

/// A light's `L` leads away from it, a surface's to it.
void QxHostScene::TakeLight(Level& level, QxShaderInstance& light, const QxVector3* positions,
                            unsigned int points, const QxLightInput& result)
{
    const QxGrid layout = level.layout.Size() == points ? level.layout : QxGrid{points, 1};
    // Taken out while the light runs, since its answers may ask for light again.
    std::unique_ptr<QxHostGrid> grid = std::move(level.lightGrid);
    if (!grid)
        grid = std::make_unique<QxHostGrid>(layout.columns, layout.rows);
    if (grid->Layout().columns != layout.columns || grid->Layout().rows != layout.rows)
        grid->Reset(layout.columns, layout.rows);
    RunLight(level, light, *grid, positions);
    const QxHiddenVariables lit = grid->Hidden();
    for (unsigned int i = 0; i < points; ++i)
        result.L[i] = -lit.L[i];
    std::copy_n(lit.Cl, points, result.Cl);
    std::copy_n(lit.Ol, points, result.Ol);
    level.lightGrid = std::move(grid);
}

QxRGBColor QxHostScene::AmbientOf(Level& level, QxShaderInstance& light, const QxVector3& position)
{
    if (!level.ambientGrid)
        level.ambientGrid = std::make_unique<QxHostGrid>(1, 1);
    level.inAmbient = true;
    try {
        RunLight(level, light, *level.ambientGrid, &position);
    } catch (...) {
        level.inAmbient = false;
        throw;
    }
    level.inAmbient = false;
    return level.ambientGrid->Values<QxRGBColor>("Cl")[0];
}

/// Of all lights that are alike at all points: once for a grid, when it is first wanted.
QxRGBColor QxHostScene::SteadyAmbient(Level& level)
{
    if (level.steadyAmbient)
        return *level.steadyAmbient;
    QxRGBColor sum = m_ambientColor;
    for (std::size_t i = 0; i < m_ambientShaders.size(); ++i)
        if (m_ambientShaders[i].steady)
            sum = sum + AmbientOf(level, *m_ambientShaders[i].shader, {0, 0, 0});
    level.steadyAmbient = sum;
    return sum;
}

bool QxHostScene::HasPlaceAmbient() const
{
    return std::any_of(m_ambientShaders.begin(), m_ambientShaders.end(),
                       [](const AmbientShader& light) { return !light.steady; });
}

QxRGBColor QxHostScene::Ambient(const QxVector3& position)
{
    Level& level = CurrentLevel();
    if (level.inAmbient)
        return m_ambientColor;
    QxRGBColor sum = SteadyAmbient(level);
    for (std::size_t i = 0; i < m_ambientShaders.size(); ++i)
        if (!m_ambientShaders[i].steady)
            sum = sum + AmbientOf(level, *m_ambientShaders[i].shader, position);
    return sum;
}

void QxHostScene::AmbientOverGrid(const QxVector3* positions, unsigned int points,
                                  QxRGBColor* results)
{
    Level& level = CurrentLevel();
    if (level.inAmbient || HasPlaceAmbient())
        QxShaderSupport::AmbientOverGrid(positions, points, results);
    else
        std::fill_n(results, points, SteadyAmbient(level));
}

bool QxHostScene::Message(QxMessage message, const char*, const char* name,
                          const QxMessageValue& value)
{
    const auto found = m_answers.find({message, name});
    if (found == m_answers.end() || !found->second.Fits(value.type) ||
        found->second.Count() != value.length)
        return false;
    if (value.type != QxValueType::String) {
        value.Store(found->second.numbers.data());
        return true;
    }
    std::vector<const char*> texts;
    for (const std::string& text : found->second.texts)
        texts.push_back(text.c_str());
    value.Store(texts.data());
    return true;
}
