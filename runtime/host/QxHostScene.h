#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "QxShaderSupport.h"
#include "host/QxHostGrid.h"
#include "host/QxHostSpaces.h"

class QxShaderInstance;

/// What shaders of a host share: coordinate spaces, lights, and answers to their questions. What
/// else needs a scene gets the neutral answer; a host that knows better derives from this.
///
/// While shaders run, a scene belongs to one thread: it keeps what it knows of the grids that are
/// being shaded, and runs light shaders on grids of its own. Threads need scenes of their own.
///
/// An answer may shade with the same scene and the same instances, so that rays are followed by
/// shading what they hit: each grid within another one has a level of its own. Levels keep their
/// memory for the next grid, and cost nothing until they are used.
class QxHostScene : public QxShaderSupport {
public:
    /// How deep grids may be shaded within each other unless it is set.
    static constexpr unsigned int k_rayLevelLimit = 32;

    /// A grid that would be shaded within that many others ends with a `QxHostError`; 0 allows none
    /// within another one. A host that follows rays looks at `RayLevel` and stops before. Each
    /// level takes some kilobytes of the thread's stack.
    void SetRayLevelLimit(unsigned int limit) { m_rayLevelLimit = limit; }
    [[nodiscard]] unsigned int RayLevelLimit() const { return m_rayLevelLimit; }

    /// Spaces by name. The current one is that of the grids; a name that is not defined means it.
    [[nodiscard]] QxHostSpaces& Spaces() { return m_spaces; }

    // Lights. Places and directions are in the current space. They may be added between two grids;
    // none is ever removed.

    /// From everywhere alike; several add up.
    void AddAmbientLight(const QxRGBColor& color);
    /// As bright at any distance.
    void AddPointLight(const QxVector3& position, const QxRGBColor& color);
    /// `direction`: the way that the light goes.
    void AddDistantLight(const QxVector3& direction, const QxRGBColor& color);
    /// A light shader, which must outlive the scene and stands where its "shader" space does. One
    /// without `illuminate` and `solar` is ambient. Throws `QxHostError` if it is no light shader.
    void AddLight(QxShaderInstance& light);
    /// Without the ambient ones.
    [[nodiscard]] unsigned int LightCount() const;

    /// What a message such as `attribute("name", ...)` finds under the name. A value of another
    /// type or length than the shader asks for is no answer. The last one set counts.
    void SetAnswer(QxMessage message, const std::string& name, const QxHostValue& value);

    /// Points are shaded as long as this lives: lights are run on grids of their layout, and see
    /// their eye and time. `QxShaderInstance::Run` makes one when it is handed a scene; a host that
    /// shades by other means does it itself. Such objects go in reverse order of their making.
    class GridScope {
    public:
        /// Throws `QxHostError` where rays are nested deeper than the limit.
        GridScope(QxHostScene& scene, const QxHostPoints& points);
        ~GridScope() { --m_scene.m_depth; }
        GridScope(const GridScope&) = delete;
        GridScope& operator=(const GridScope&) = delete;

    private:
        QxHostScene& m_scene;
    };

    // What shaders ask, see `QxShaderSupport`. Each throws `QxHostError` if a light shader cannot
    // be run.

    /// Fills the values of all lights but the ambient ones, in the order in which they were added.
    void EvaluateLights(const QxVector3* positions, unsigned int points, QxLightInput* lights,
                        unsigned int count) override;
    /// The sum of the ambient lights at a place. An ambient light that asks gets only what has no
    /// shader.
    QxRGBColor Ambient(const QxVector3& position) override;
    void AmbientOverGrid(const QxVector3* positions, unsigned int points,
                         QxRGBColor* results) override;
    /// Grids around the one that is being shaded: 0 while none or one is.
    float RayLevel() override { return m_depth > 1 ? static_cast<float>(m_depth - 1) : 0; }
    /// True if there is an answer, which then stands in `value`.
    bool Message(QxMessage message, const char* texture, const char* name,
                 const QxMessageValue& value) override;

private:
    struct Light {
        QxVector3 place = {0, 0, 0};  // or the direction
        bool distant = false;
        QxRGBColor color = {0, 0, 0};
        QxShaderInstance* shader = nullptr;  // in place of all others
    };

    struct AmbientShader {
        QxShaderInstance* shader;
        bool steady;  // alike at all points
    };
    /// What is known of a grid that is being shaded.
    struct Level {
        QxGrid layout = {1, 1};
        float time = 0;
        QxVector3 eye = {0, 0, 0};
        std::unique_ptr<QxHostGrid> lightGrid;    // once a light shader has been run
        std::unique_ptr<QxHostGrid> ambientGrid;  // of one point
        std::optional<QxRGBColor> steadyAmbient;
        bool inAmbient = false;  // an ambient light is being run
    };

    [[nodiscard]] Level& CurrentLevel();
    [[nodiscard]] bool HasPlaceAmbient() const;
    [[nodiscard]] QxRGBColor SteadyAmbient(Level& level);
    [[nodiscard]] QxRGBColor AmbientOf(Level& level, QxShaderInstance& light,
                                       const QxVector3& position);
    void RunLight(Level& level, QxShaderInstance& light, QxHostGrid& grid,
                  const QxVector3* positions);
    void TakeLight(Level& level, QxShaderInstance& light, const QxVector3* positions,
                   unsigned int points, const QxLightInput& result);

    QxHostSpaces m_spaces;
    std::vector<Light> m_lights;
    std::map<std::pair<QxMessage, std::string>, QxHostValue> m_answers;

    QxRGBColor m_ambientColor = {0, 0, 0};
    std::vector<AmbientShader> m_ambientShaders;

    unsigned int m_rayLevelLimit = k_rayLevelLimit;
    unsigned int m_depth = 0;                      // grids that are being shaded
    std::vector<std::unique_ptr<Level>> m_levels;  // outermost first; they stay when they end
};
