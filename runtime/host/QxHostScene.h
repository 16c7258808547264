#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "QxShaderSupport.h"
#include "host/QxHostGrid.h"
#include "host/QxHostSpaces.h"
#include "host/QxVersion.h"

class QxShaderInstance;

/// Identifies a light of one scene, which does not reuse it after the light was removed.
enum class QxLightHandle : std::uint32_t {};

/// Describes the object that a grid is part of: the instances that receive messages while the grid
/// is shaded, each null if there is none, and the categories of the object, by which lights can be
/// limited to objects.
struct QxHostObject {
    QxShaderInstance* surface = nullptr;
    QxShaderInstance* displacement = nullptr;
    QxShaderInstance* atmosphere = nullptr;
    QxShaderInstance* incident = nullptr;  // the volume that incoming rays pass through
    QxShaderInstance* opposite = nullptr;  // the volume on the other side of the surface
    std::vector<std::string> categories;
};

/// What the shaders of a host share: coordinate spaces, lights, and answers to their questions,
/// which are the virtual functions of `QxShaderSupport`. Questions that this class does not answer
/// get the neutral answers of `QxShaderSupport`. A host derives a class from this one and overrides
/// the questions that it can answer.
///
/// A scene is used by one thread at a time, since it stores the state of the grids that are being
/// shaded and runs light shaders on its own grids. Each thread needs its own scene.
///
/// An answer, that is an override of a question, may shade further grids with the same scene and
/// the same instances, for example where a ray hits. Each nested grid has its own level of state.
/// Levels are kept and reused, so a nested grid allocates none once its depth has been reached.
class QxHostScene : public QxShaderSupport {
public:
    /// The limit until `SetRayLevelLimit` is called.
    static constexpr unsigned int k_rayLevelLimit = 32;

    /// Limits the nesting of grids: at most `limit` grids may be in progress when an answer begins
    /// another one; otherwise beginning it throws `QxHostError`. With 0 no grid can be nested. A
    /// host that follows rays should compare `RayLevel` with its own limit first. Each level takes
    /// some kilobytes of the thread's stack.
    void SetRayLevelLimit(unsigned int limit) { m_rayLevelLimit = limit; }
    [[nodiscard]] unsigned int RayLevelLimit() const { return m_rayLevelLimit; }

    /// The spaces of the scene. Grids are in the current space; a name that is not defined also
    /// denotes the current space.
    [[nodiscard]] QxHostSpaces& Spaces() { return m_spaces; }

    // Lights. Positions and directions are in the current space. Each function that adds a light
    // returns its handle. Each function that adds, changes or removes a light throws `QxHostError`
    // while a grid is being shaded.

    /// Adds light that is the same at all points and has no direction. Ambient lights add up.
    QxLightHandle AddAmbientLight(const QxRGBColor& color);
    /// Adds a light at a position. It is equally bright at all distances.
    QxLightHandle AddPointLight(const QxVector3& position, const QxRGBColor& color);
    /// Adds a light with parallel rays along `direction`, from the light to the scene. The
    /// direction may have any length.
    QxLightHandle AddDistantLight(const QxVector3& direction, const QxRGBColor& color);
    /// Adds a light shader, at the origin of its "shader" space. The instance must outlive its use
    /// as a light. A shader without `illuminate` and `solar` is an ambient light. Throws
    /// `QxHostError` if the shader is not a light.
    QxLightHandle AddLight(QxShaderInstance& light);
    /// Removes a light. Throws `QxHostError` if the scene does not have it any more. O(n).
    void RemoveLight(QxLightHandle light);
    /// Switches a light off or on. New lights are on. Throws like `RemoveLight`. O(n).
    void SwitchLight(QxLightHandle light, bool on);
    /// Limits a light to objects that have at least one of the categories; an empty list removes
    /// the limit. Throws like `RemoveLight`. O(n).
    void LimitLight(QxLightHandle light, std::vector<std::string> categories);
    /// Returns the number of lights, except ambient ones, that light the current grid. If no grid
    /// is being shaded, returns how many would light an object without categories.
    [[nodiscard]] unsigned int LightCount() const;
    /// Returns the light whose shader is running for the current grid, so that an answer can see
    /// which light asks; nothing if no light shader is running for it.
    [[nodiscard]] std::optional<QxLightHandle> RunningLight() const;

    /// Sets the object of all grids that begin from now on; null for an unknown object. The object
    /// must stay unchanged until these grids have ended and another object has been set. An answer
    /// may set the object that its ray hit: when the nested grid ends, the object of the outer grid
    /// is restored.
    void SetObject(const QxHostObject* object) { m_object = object; }

    /// Sets the seed of `random`, 0 by default. A random number depends on this seed, the run
    /// number, the shader's type or light, the depth of the grid, the number of the point in its
    /// grid, and how many numbers the point has drawn in this run. So a picture does not depend on
    /// the number of threads if the host calls `SetRun` with a separate run number for each piece
    /// of the picture and for each grid shaded for a ray.
    void SetRandomSeed(unsigned int seed) { m_randomSeed = seed; }
    /// Sets the run number of all grids that begin from now on, 0 by default. When a nested grid
    /// ends, the run number of the outer grid is restored.
    void SetRun(unsigned int run) { m_run = run; }

    /// Sets the answer to a message such as `attribute("name", ...)`, in place of an earlier one. A
    /// shader that asks for a type that does not fit, see `QxFitsType`, or for another number of
    /// array elements gets no answer.
    void SetAnswer(QxMessage message, const std::string& name, const QxHostValue& value);
    /// Removes an answer that `SetAnswer` has set. No effect if there is none.
    void ClearAnswer(QxMessage message, const std::string& name);
    /// Sets the answer to `textureinfo` for one texture. It takes precedence over an answer of
    /// `SetAnswer`, which is for all textures.
    void SetTextureAnswer(const std::string& texture, const std::string& name,
                          const QxHostValue& value);
    /// Removes an answer that `SetTextureAnswer` has set. No effect if there is none.
    void ClearTextureAnswer(const std::string& texture, const std::string& name);

    /// Discards all results of `FindFile`, for example after a texture was replaced, so that
    /// instances call `FindFile` again in their next run with the scene. Otherwise they keep each
    /// result, including null, as long as they run with this scene only.
    void ForgetFiles() { m_files = QxNextVersion(); }
    /// For instances: a number that differs for each scene and changes with each `ForgetFiles`.
    [[nodiscard]] unsigned long FilesVersion() const { return m_files; }

    /// Marks points as being shaded as long as this object exists: light shaders get the same eye
    /// and time, and those that are not ambient run on a grid of the same layout if they are asked
    /// for light at as many points. `QxShaderInstance::Run` creates one of these objects if it is
    /// called with a scene; a host that shades in another way must create one itself. They must be
    /// destroyed in reverse order of creation.
    class GridScope {
    public:
        /// `shader`: the instance that shades, if there is one. Throws `QxHostError` if grids are
        /// nested deeper than the limit of `SetRayLevelLimit`.
        GridScope(QxHostScene& scene, const QxHostPoints& points,
                  QxShaderInstance* shader = nullptr);
        ~GridScope();
        GridScope(const GridScope&) = delete;
        GridScope& operator=(const GridScope&) = delete;

    private:
        QxHostScene& m_scene;
    };

    // Answers, see `QxShaderSupport`. If an answer has to run a light shader, or to compute the
    // parameters of an instance, it throws what this throws, such as `QxHostError`.

    /// Fills the values of the first `count` lights, or of fewer if there are not so many: those
    /// that light the object of the grid, except ambient ones, in the order in which they were
    /// added.
    void EvaluateLights(const QxVector3* positions, unsigned int points, QxLightInput* lights,
                        unsigned int count) override;
    /// Returns the sum of the ambient lights that light the object of the grid, at a position. An
    /// ambient light shader that asks for ambient light gets only the sum of those that have no
    /// shader.
    QxRGBColor Ambient(const QxVector3& position) override;
    // The same for a numbered point, and for many points.
    QxRGBColor AmbientAt(const QxVector3& position, unsigned int point) override;
    void AmbientOverGrid(const QxVector3* positions, unsigned int points,
                         QxRGBColor* results) override;
    /// Returns how many outer grids the current grid is nested in; 0 if no grid is being shaded.
    float RayLevel() override { return m_depth > 1 ? static_cast<float>(m_depth - 1) : 0; }
    /// Stores the answer in `value` and returns true, or returns false if there is none. A message
    /// to a shader of the object is answered first by this instance (see `QxHostObject`), with its
    /// parameter of that name. If the object has no instance for a message to its surface,
    /// displacement or atmosphere, the instance that shades the grid answers if it has that type.
    /// Answers that the host has set come last.
    bool Message(QxMessage message, const char* texture, const char* name,
                 const QxMessageValue& value) override;
    /// Answers with the value of a parameter of the light's shader in its run for this grid. If
    /// there is no light of that number, or it has no shader or no such parameter, or the shader
    /// has not run for this grid, answers like `Message` with `QxMessage::LightSource`.
    bool LightMessage(unsigned int light, const char* name, const QxMessageValue& value) override;
    /// Returns the number that `SetRandomSeed` describes, or that of an overridden `Random`. A
    /// default value that is computed once for several runs gets a number that depends only on the
    /// seed, the point and how many numbers have been drawn for it. An ambient light shader runs at
    /// one point at a time and gets the numbers of the point that it lights. An override of this
    /// function gets point 0 in all runs of such a light, which then draws the same numbers at all
    /// points.
    float RandomNumber(unsigned int point, unsigned int draw) override;

private:
    // These are not named Light and Level, since classes that hosts derive from this one may use
    // these names.
    struct SceneLight {
        enum class Kind { Ambient, Point, Distant, Shader, AmbientShader };

        Kind kind;
        QxLightHandle handle;
        QxVector3 place;  // position, or direction of a distant light
        QxRGBColor color;
        QxShaderInstance* shader;  // null for a light without a shader
        bool uniform;              // ambient: the same at all points, unless a run shows otherwise
        bool on = true;
        std::vector<std::string> categories;

        [[nodiscard]] bool IsAmbient() const
        {
            return kind == Kind::Ambient || kind == Kind::AmbientShader;
        }
        [[nodiscard]] bool Illuminates(const QxHostObject* object) const;
    };
    struct Answer {
        QxMessage message;
        std::string name;
        QxHostValue value;
    };
    struct AmbientSource {
        SceneLight* light;
        bool uniform;
    };
    /// The state of a grid that is being shaded.
    struct SceneLevel {
        QxGrid layout = {1, 1};
        float time = 0;
        QxVector3 eye = {0, 0, 0};
        const QxHostObject* object = nullptr;
        unsigned int run = 0;
        QxShaderInstance* shader = nullptr;
        std::vector<const SceneLight*> lights;  // those that light the object, except ambient ones
        std::vector<AmbientSource> ambientLights;  // those that light the object
        std::vector<unsigned long> runs;  // by light: `m_runs` of its instance after it ran for
                                          // the grid; 0 before
        std::unique_ptr<QxHostGrid> lightGrid;     // also of earlier grids; null while a light runs
        std::unique_ptr<QxHostGrid> ambientGrid;   // the same for ambient light shaders; one point
        std::optional<QxRGBColor> uniformAmbient;  // sum of the uniform ambient lights
        const SceneLight* running = nullptr;
        bool inAmbient = false;         // an ambient light shader is running
        bool hasDrawn = false;          // the last run of an ambient light drew for its point
        unsigned int ambientPoint = 0;  // number of the point whose ambient light is computed
    };

    class LightScope;

    QxLightHandle Add(SceneLight light);
    [[nodiscard]] SceneLight& FindLight(QxLightHandle light);
    void CheckBetweenGrids() const;
    void ChooseLights(SceneLevel& level);
    [[nodiscard]] SceneLevel& CurrentLevel();
    [[nodiscard]] QxRGBColor UniformAmbient(SceneLevel& level);
    [[nodiscard]] QxRGBColor RunAmbientLight(SceneLevel& level, const SceneLight& light,
                                             const QxVector3& position);
    void RunLight(SceneLevel& level, const SceneLight& light, QxHostGrid& grid,
                  const QxVector3* positions);
    void EvaluateLightShader(SceneLevel& level, unsigned int number, const QxVector3* positions,
                             unsigned int points, const QxLightInput& result);
    void RunLightAgain(SceneLevel& level, unsigned int number);
    [[nodiscard]] QxShaderInstance* ReceiverOf(QxMessage message);
    /// Returns the position of an answer in `m_answers`, or where it would be inserted.
    [[nodiscard]] std::size_t PlaceOfAnswer(QxMessage message, const std::string& name) const;
    [[nodiscard]] bool HasAnswer(std::size_t place, QxMessage message,
                                 const std::string& name) const;
    [[nodiscard]] bool AnswerOfHost(const std::string& name, QxMessage message,
                                    const QxMessageValue& value) const;

    QxHostSpaces m_spaces;
    std::vector<SceneLight> m_lights;
    std::uint32_t m_lastLight = 0;
    std::vector<Answer> m_answers;  // sorted by message and name
    const QxHostObject* m_object = nullptr;
    unsigned long m_files = QxNextVersion();
    unsigned int m_randomSeed = 0;
    unsigned int m_run = 0;

    unsigned int m_rayLevelLimit = k_rayLevelLimit;
    unsigned int m_depth = 0;                           // number of grids that are being shaded
    std::vector<std::unique_ptr<SceneLevel>> m_levels;  // outermost first; kept when grids end
};
