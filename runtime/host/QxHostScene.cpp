// A light shader runs on a separate grid whose `Ps` are the points that ask for light. Its `L`
// points from the light to the lit point; in a surface shader `L` points the other way.
//
// An ambient light shader that neither reads `Ps` nor draws random numbers is uniform: it runs once
// per grid, at one point, when a shader first asks for ambient light. Whether it draws numbers is
// known only after that run; if it does, the result is dropped, and in this and all later grids the
// light runs for each point.
//
// An answer to a shader may shade another grid. The state of each grid is a level of a stack, and
// answers use the top level. Levels are kept when their grids end, so that following rays allocates
// no level once each depth has been reached.
//
// Tested by tests/host/HostSceneTest.cpp and tests/host/RecursionTest.cpp.

#include "host/QxHostScene.h"

#include <algorithm>

#include "QxHostError.h"
#include "QxMatrixMath.h"
#include "host/QxShaderInstance.h"

QxHostScene::GridScope::GridScope(QxHostScene& scene, const QxHostPoints& points,
                                  QxShaderInstance* shader)
    : m_scene(scene)
{
    if (scene.m_depth > scene.m_rayLevelLimit)
        throw QxHostError("Rays are nested deeper than the limit of " +
                          std::to_string(scene.m_rayLevelLimit) + " levels");
    if (scene.m_depth == scene.m_levels.size())
        scene.m_levels.push_back(std::make_unique<SceneLevel>());
    SceneLevel& level = *scene.m_levels[scene.m_depth];
    level.layout = points.layout;
    level.time = points.variables.time ? *points.variables.time : 0;
    level.eye = points.E;
    level.object = scene.m_object;
    level.run = scene.m_run;
    level.shader = shader;
    level.running = nullptr;
    level.uniformAmbient.reset();
    level.inAmbient = false;
    level.ambientPoint = 0;
    scene.ChooseLights(level);
    ++scene.m_depth;
}

QxHostScene::GridScope::~GridScope()
{
    if (--m_scene.m_depth == 0)
        return;
    const SceneLevel& around = *m_scene.m_levels[m_scene.m_depth - 1];
    m_scene.m_object = around.object;
    m_scene.m_run = around.run;
}

void QxHostScene::ChooseLights(SceneLevel& level)
{
    level.lights.clear();
    level.ambientLights.clear();
    for (SceneLight& light : m_lights) {
        if (!light.Illuminates(level.object))
            continue;
        if (light.IsAmbient())
            level.ambientLights.push_back({&light, light.uniform});
        else
            level.lights.push_back(&light);
    }
    level.runs.assign(level.lights.size(), 0);
}

/// Returns the level of the innermost grid that is being shaded. A host may also call answers while
/// no grid is being shaded: then returns the first level, with the object and the run number that
/// the next grid would have.
QxHostScene::SceneLevel& QxHostScene::CurrentLevel()
{
    if (m_levels.empty())
        m_levels.push_back(std::make_unique<SceneLevel>());
    if (m_depth > 0)
        return *m_levels[m_depth - 1];
    SceneLevel& level = *m_levels[0];
    level.object = m_object;
    level.run = m_run;
    level.shader = nullptr;
    return level;
}

float QxHostScene::RandomNumber(unsigned int point, unsigned int draw)
{
    if (draw >= QxDraws::k_ofDefaults)
        return Offer(m_randomSeed, {static_cast<int>(draw), static_cast<int>(point)});
    SceneLevel& level = CurrentLevel();
    if (level.inAmbient && point != QxDraws::k_allPoints) {
        level.hasDrawn = true;
        point = level.ambientPoint;
    }
    const int shader = level.running  ? static_cast<int>(level.running->handle)
                       : level.shader ? -1 - static_cast<int>(level.shader->Shader().Type())
                                      : 0;
    return Offer(m_randomSeed, {static_cast<int>(draw), static_cast<int>(point),
                                static_cast<int>(level.run), static_cast<int>(m_depth), shader});
}

/// Marks a light shader as running, and takes the grid that it runs on out of the level, as long as
/// this object exists: answers to the light may ask for light again, and may throw.
class QxHostScene::LightScope {
public:
    LightScope(SceneLevel& level, const SceneLight& light)
        : m_level(level),
          m_home(light.IsAmbient() ? level.ambientGrid : level.lightGrid),
          m_grid(std::move(m_home)),
          m_outer(level.running),
          m_wasInAmbient(level.inAmbient)
    {
        level.running = &light;
        level.inAmbient = level.inAmbient || light.IsAmbient();
    }
    ~LightScope()
    {
        m_home = std::move(m_grid);
        m_level.running = m_outer;
        m_level.inAmbient = m_wasInAmbient;
    }
    LightScope(const LightScope&) = delete;
    LightScope& operator=(const LightScope&) = delete;

    /// Returns the grid, created or reset if it does not have the given layout.
    [[nodiscard]] QxHostGrid& Grid(const QxGrid& layout)
    {
        if (!m_grid)
            m_grid = std::make_unique<QxHostGrid>(layout.columns, layout.rows);
        if (m_grid->Layout().columns != layout.columns || m_grid->Layout().rows != layout.rows)
            m_grid->Reset(layout.columns, layout.rows);
        return *m_grid;
    }
    /// Returns the grid as the last run left it. The level must have had a grid.
    [[nodiscard]] QxHostGrid& Grid() { return *m_grid; }

private:
    SceneLevel& m_level;
    std::unique_ptr<QxHostGrid>& m_home;
    std::unique_ptr<QxHostGrid> m_grid;
    const SceneLight* const m_outer;
    const bool m_wasInAmbient;
};

/// Runs a light shader on `grid` for `positions`, which may be the `Ps` of the grid. Called within
/// the `LightScope` of the light. In the shader, `P` is the origin of its "shader" space.
void QxHostScene::RunLight(SceneLevel& level, const SceneLight& light, QxHostGrid& grid,
                           const QxVector3* positions)
{
    const QxMatrix44& place = light.shader->Spaces().Find("shader")->toCurrent;
    const QxHiddenVariables at = grid.Hidden();
    const std::size_t points = grid.Size();
    std::fill_n(at.P, points, QxVector3{place[3][0], place[3][1], place[3][2]});
    std::fill_n(at.L, points, QxVector3{0, 0, 0});
    std::fill_n(at.Cl, points, QxRGBColor{0, 0, 0});
    std::fill_n(at.Ol, points, QxRGBColor{1, 1, 1});
    if (positions != at.Ps)
        std::copy_n(positions, points, at.Ps);
    *at.time = level.time;
    light.shader->Shade({grid.Layout(), at, level.eye}, *this, 0, m_files);
}

void QxHostScene::EvaluateLights(const QxVector3* positions, unsigned int points,
                                 QxLightInput* lights, unsigned int count)
{
    if (m_depth == 0) {
        const GridScope scope(*this, {{points, 1}, {}, {0, 0, 0}});
        return EvaluateLights(positions, points, lights, count);
    }
    SceneLevel& level = CurrentLevel();
    for (unsigned int i = 0; i < count && i < level.lights.size(); ++i) {
        const SceneLight& light = *level.lights[i];
        if (light.shader) {
            EvaluateLightShader(level, i, positions, points, lights[i]);
            continue;
        }
        QxVector3* L = lights[i].L;
        if (light.kind == SceneLight::Kind::Distant)
            std::fill_n(L, points, -light.place);
        else
            for (unsigned int point = 0; point < points; ++point)
                L[point] = light.place - positions[point];
        std::fill_n(lights[i].Cl, points, light.color);
        std::fill_n(lights[i].Ol, points, QxRGBColor{1, 1, 1});
    }
}

/// Runs a light shader for the points that ask for light, and stores its result with `L` reversed.
void QxHostScene::EvaluateLightShader(SceneLevel& level, unsigned int number,
                                      const QxVector3* positions, unsigned int points,
                                      const QxLightInput& result)
{
    const SceneLight& light = *level.lights[number];
    const QxGrid layout = level.layout.Size() == points ? level.layout : QxGrid{points, 1};
    LightScope scope(level, light);
    QxHostGrid& grid = scope.Grid(layout);
    RunLight(level, light, grid, positions);
    const QxHiddenVariables lit = grid.Hidden();
    for (unsigned int i = 0; i < points; ++i)
        result.L[i] = -lit.L[i];
    std::copy_n(lit.Cl, points, result.Cl);
    std::copy_n(lit.Ol, points, result.Ol);
    level.runs[number] = light.shader->m_runs;
}

/// Runs a light shader again, at the points at which the last non-ambient light shader of the level
/// has run.
void QxHostScene::RunLightAgain(SceneLevel& level, unsigned int number)
{
    const SceneLight& light = *level.lights[number];
    LightScope scope(level, light);
    RunLight(level, light, scope.Grid(), scope.Grid().Hidden().Ps);
    level.runs[number] = light.shader->m_runs;
}

/// Runs an ambient light shader at one position and returns its light. `level.hasDrawn` then shows
/// whether the run has drawn random numbers for the point.
QxRGBColor QxHostScene::RunAmbientLight(SceneLevel& level, const SceneLight& light,
                                        const QxVector3& position)
{
    LightScope scope(level, light);
    QxHostGrid& grid = scope.Grid({1, 1});
    level.hasDrawn = false;
    RunLight(level, light, grid, &position);
    return grid.Values<QxRGBColor>("Cl")[0];
}

/// Returns the sum of all uniform ambient lights, which is computed once per grid, at the first
/// call. This also finds the lights that draw random numbers and so are not uniform. While an
/// ambient light shader is running, returns only the sum of the lights without a shader.
QxRGBColor QxHostScene::UniformAmbient(SceneLevel& level)
{
    if (level.uniformAmbient && !level.inAmbient)
        return *level.uniformAmbient;
    QxRGBColor sum = {0, 0, 0};
    for (const AmbientSource& source : level.ambientLights)
        if (source.light->kind == SceneLight::Kind::Ambient)
            sum = sum + source.light->color;
    if (level.inAmbient)
        return sum;
    for (AmbientSource& source : level.ambientLights) {
        if (!source.light->shader || !source.uniform)
            continue;
        const QxRGBColor color = RunAmbientLight(level, *source.light, {0, 0, 0});
        if (level.hasDrawn)
            source.uniform = source.light->uniform = false;
        else
            sum = sum + color;
    }
    level.uniformAmbient = sum;
    return sum;
}

QxRGBColor QxHostScene::Ambient(const QxVector3& position)
{
    if (m_depth == 0) {
        const GridScope scope(*this, {{1, 1}, {}, {0, 0, 0}});
        return Ambient(position);
    }
    SceneLevel& level = CurrentLevel();
    QxRGBColor sum = UniformAmbient(level);
    if (level.inAmbient)
        return sum;
    for (const AmbientSource& source : level.ambientLights)
        if (!source.uniform)
            sum = sum + RunAmbientLight(level, *source.light, position);
    return sum;
}

QxRGBColor QxHostScene::AmbientAt(const QxVector3& position, unsigned int point)
{
    if (m_depth == 0) {
        const GridScope scope(*this, {{1, 1}, {}, {0, 0, 0}});
        return AmbientAt(position, point);
    }
    SceneLevel& level = CurrentLevel();
    if (!level.inAmbient)
        level.ambientPoint = point;
    return Ambient(position);
}

void QxHostScene::AmbientOverGrid(const QxVector3* positions, unsigned int points,
                                  QxRGBColor* results)
{
    if (m_depth == 0) {
        const GridScope scope(*this, {{points, 1}, {}, {0, 0, 0}});
        return AmbientOverGrid(positions, points, results);
    }
    SceneLevel& level = CurrentLevel();
    const QxRGBColor uniform = UniformAmbient(level);
    if (std::all_of(level.ambientLights.begin(), level.ambientLights.end(),
                    [](const AmbientSource& source) { return source.uniform; }))
        std::fill_n(results, points, uniform);
    else
        QxShaderSupport::AmbientOverGrid(positions, points, results);
}
