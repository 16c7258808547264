#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "QxShaderSupport.h"
#include "host/QxHostGrid.h"
#include "host/QxHostSpaces.h"
#include "host/QxVersion.h"

class QxShaderInstance;

/// A light of a scene.
enum class QxLightHandle : std::uint32_t {};

/// What belongs to the surface that a grid is a part of: the instances that its shaders send
/// messages to, null for none, and categories, by which lights choose what they light.
struct QxHostObject {
    QxShaderInstance* surface = nullptr;
    QxShaderInstance* displacement = nullptr;
    QxShaderInstance* atmosphere = nullptr;
    QxShaderInstance* incident = nullptr;  // the volume that rays come through
    QxShaderInstance* opposite = nullptr;  // the volume on the other side
    std::vector<std::string> categories;
};

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

    // Lights. Places and directions are in the current space. They are added, removed and changed
    // between grids alone: each of these throws `QxHostError` while one is shaded.

    /// From everywhere alike; several add up.
    QxLightHandle AddAmbientLight(const QxRGBColor& color);
    /// As bright at any distance.
    QxLightHandle AddPointLight(const QxVector3& position, const QxRGBColor& color);
    /// `direction`: the way that the light goes.
    QxLightHandle AddDistantLight(const QxVector3& direction, const QxRGBColor& color);
    /// A light shader, which must outlive its use and stands where its "shader" space does. One
    /// without `illuminate` and `solar` is ambient. Throws `QxHostError` if it is no light shader.
    QxLightHandle AddLight(QxShaderInstance& light);
    /// Throws `QxHostError` for a light that was removed before. O(n).
    void RemoveLight(QxLightHandle light);
    /// A light that is switched off lights nothing, until it is switched on. O(n).
    void SwitchLight(QxLightHandle light, bool on);
    /// From now on it lights objects alone that have one of the categories; all objects for an
    /// empty list. O(n).
    void LimitLight(QxLightHandle light, std::vector<std::string> categories);
    /// Those without the ambient ones that light the grid which is being shaded, or, while none is,
    /// that would light an object without categories.
    [[nodiscard]] unsigned int LightCount() const;
    /// The light whose shader is being run, for answers to it.
    [[nodiscard]] std::optional<QxLightHandle> RunningLight() const;

    /// The grids that begin from now on are parts of this object; null for one of which nothing is
    /// known. It must live, and stay as it is, until such grids have ended and another one was set.
    /// An answer may set the object that its ray hit: when its grid ends, that of the grid around
    /// it counts again.
    void SetObject(const QxHostObject* object) { m_object = object; }

    /// From what `random` draws its numbers: this seed, the number of the run, the kind of the
    /// shader, the place of the point in its grid, and how many numbers the point has drawn in this
    /// run. So a picture is the same in any number of threads if each piece of it, and each ray
    /// that is shaded within a grid, is given a number of its own. 0 unless set.
    void SetRandomSeed(unsigned int seed) { m_randomSeed = seed; }
    /// The number of the grids that begin from now on. When a grid ends, that of the grid around it
    /// counts again.
    void SetRun(unsigned int run) { m_run = run; }

    /// What a message such as `attribute("name", ...)` finds under the name. A value of another
    /// type or length than the shader asks for is no answer. The last one set counts.
    void SetAnswer(QxMessage message, const std::string& name, const QxHostValue& value);
    void ClearAnswer(QxMessage message, const std::string& name);
    /// The same for `textureinfo`, of one texture.
    void SetTextureAnswer(const std::string& texture, const std::string& name,
                          const QxHostValue& value);
    void ClearTextureAnswer(const std::string& texture, const std::string& name);

    /// What `FindFile` returned is out of date, such as after a texture was replaced: instances ask
    /// again when they begin their next run with the scene. Until then they keep it, also null.
    void ForgetFiles() { m_files = QxNextVersion(); }
    /// For instances: another number for each scene, and after each `ForgetFiles`.
    [[nodiscard]] unsigned long FilesVersion() const { return m_files; }

    /// Points are shaded as long as this lives: lights are run on grids of their layout, and see
    /// their eye and time. `QxShaderInstance::Run` makes one when it is handed a scene; a host that
    /// shades by other means does it itself. Such objects go in reverse order of their making.
    class GridScope {
    public:
        /// `shader`: the instance that shades, if one does. Throws `QxHostError` where rays are
        /// nested deeper than the limit.
        GridScope(QxHostScene& scene, const QxHostPoints& points,
                  QxShaderInstance* shader = nullptr);
        ~GridScope();
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
    QxRGBColor AmbientAt(const QxVector3& position, unsigned int point) override;
    void AmbientOverGrid(const QxVector3* positions, unsigned int points,
                         QxRGBColor* results) override;
    /// Grids around the one that is being shaded: 0 while none or one is.
    float RayLevel() override { return m_depth > 1 ? static_cast<float>(m_depth - 1) : 0; }
    /// True if there is an answer, which then stands in `value`. The instances of the object answer
    /// before what was set by `SetAnswer`, with their parameters; the shader that is being run does
    /// where the object has none of its kind.
    bool Message(QxMessage message, const char* texture, const char* name,
                 const QxMessageValue& value) override;
    /// A light shader answers with its parameters, as it was run for the grid.
    bool LightMessage(unsigned int light, const char* name, const QxMessageValue& value) override;
    /// The number of this seed, run, shader, point and draw; a default value that is computed once
    /// for several runs belongs to none of them. A host that overrides `Random` is asked instead.
    /// An ambient light shader runs at one point a time, for which the one that it lights is taken:
    /// a host that overrides this function gets 0 there, and such a light is the same everywhere.
    float RandomNumber(unsigned int point, unsigned int draw) override;

private:
    // Hosts may call types of their own Light or Level.
    struct SceneLight {
        enum class Kind { Ambient, Point, Distant, Shader, AmbientShader };

        Kind kind;
        QxLightHandle handle;
        QxVector3 place;  // or the direction
        QxRGBColor color;
        QxShaderInstance* shader;  // in place of the others
        bool steady;               // of an ambient one: alike at all points, as far as is known
        bool on = true;
        std::vector<std::string> categories;

        [[nodiscard]] bool IsAmbient() const
        {
            return kind == Kind::Ambient || kind == Kind::AmbientShader;
        }
        [[nodiscard]] bool Lights(const QxHostObject* object) const;
    };
    struct AmbientSource {
        SceneLight* light;
        bool steady;
    };
    /// What is known of a grid that is being shaded.
    struct SceneLevel {
        QxGrid layout = {1, 1};
        float time = 0;
        QxVector3 eye = {0, 0, 0};
        const QxHostObject* object = nullptr;
        unsigned int run = 0;
        QxShaderInstance* shader = nullptr;
        std::vector<const SceneLight*> lights;     // that light the object, in their order
        std::vector<AmbientSource> ambientLights;  // likewise
        std::vector<unsigned long> runs;          // of each of `lights`: its last one for this grid
        std::unique_ptr<QxHostGrid> lightGrid;    // once a light shader has been run
        std::unique_ptr<QxHostGrid> ambientGrid;  // of one point
        std::optional<QxRGBColor> steadyAmbient;
        const SceneLight* running = nullptr;
        bool inAmbient = false;         // an ambient light is being run
        bool hasDrawn = false;          // its last run drew a number for its point
        unsigned int ambientPoint = 0;  // for which it is run
    };

    QxLightHandle Add(SceneLight light);
    [[nodiscard]] SceneLight& At(QxLightHandle light);
    void CheckBetweenGrids() const;
    void ChooseLights(SceneLevel& level);
    [[nodiscard]] SceneLevel& CurrentLevel();
    [[nodiscard]] QxRGBColor SteadyAmbient(SceneLevel& level);
    [[nodiscard]] QxRGBColor AmbientOf(SceneLevel& level, const SceneLight& light,
                                       const QxVector3& position);
    void RunLight(SceneLevel& level, const SceneLight& light, QxHostGrid& grid,
                  const QxVector3* positions);
    void TakeLight(SceneLevel& level, unsigned int number, const QxVector3* positions,
                   unsigned int points, const QxLightInput& result);
    [[nodiscard]] QxShaderInstance* ReceiverOf(QxMessage message);
    [[nodiscard]] bool AnswerOfHost(const std::string& name, QxMessage message,
                                    const QxMessageValue& value) const;

    QxHostSpaces m_spaces;
    std::vector<SceneLight> m_lights;
    std::uint32_t m_lastLight = 0;
    std::map<std::pair<QxMessage, std::string>, QxHostValue> m_answers;
    const QxHostObject* m_object = nullptr;
    unsigned long m_files = QxNextVersion();
    unsigned int m_randomSeed = 0;
    unsigned int m_run = 0;

    unsigned int m_rayLevelLimit = k_rayLevelLimit;
    unsigned int m_depth = 0;                           // grids that are being shaded
    std::vector<std::unique_ptr<SceneLevel>> m_levels;  // outermost first; they stay when they end
};
