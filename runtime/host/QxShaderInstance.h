#pragma once

#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/QxHostGrid.h"
#include "host/QxHostScene.h"
#include "host/QxHostSpaces.h"
#include "host/QxHostValue.h"
#include "host/QxParameterSet.h"
#include "host/QxShader.h"

/// A shader with values for its parameters and spaces of its own, which shades grids.
///
/// Each thread needs instances of its own; they may be of one shader. An instance may be run while
/// it runs, by an answer that follows a ray to the same surface; it must not be destroyed then.
class QxShaderInstance {
public:
    /// How often an instance may be run within its own run by a host without a `QxHostScene`.
    static constexpr unsigned int k_depthLimit = 100;

    /// All parameters have their default values. The shader's spaces are looked up by name among
    /// those of the instance, and then in `spaces`, which must outlive it. Spaces may be defined,
    /// and defined anew, between two runs; default values follow them.
    QxShaderInstance(std::shared_ptr<const QxShader> shader, QxHostSpaces& spaces);

    [[nodiscard]] const QxShader& Shader() const { return *m_shader; }
    /// Those that are this instance's alone, such as "shader".
    [[nodiscard]] QxHostSpaces& Spaces() { return m_spaces; }
    [[nodiscard]] const QxHostSpaces& Spaces() const { return m_spaces; }

    /// Sets a parameter for later runs: one element, or all those of an array. Takes back the
    /// buffer of an input. Throws `QxHostError` for an unknown parameter, another type or another
    /// length.
    void Set(QxParameterHandle parameter, const QxHostValue& value);
    void Set(const std::string& name, const QxHostValue& value)
    {
        Set(m_shader->Handle(name), value);
    }
    /// The same for a varying parameter with a value for each point of the grids to come. Their
    /// number is compared with the grid when the shader runs.
    void SetForEachPoint(QxParameterHandle parameter, const QxHostValue& values);
    void SetForEachPoint(const std::string& name, const QxHostValue& values)
    {
        SetForEachPoint(m_shader->Handle(name), values);
    }
    /// Later runs keep a parameter in `values`, which stay the caller's: laid out as `Get` gives
    /// them, and as many as the grids to come need. What they hold is the value of an input, in
    /// place of what was set before. An output parameter starts from its value as without them and
    /// leaves its result there; runs within a run of the instance leave theirs elsewhere. The
    /// memory must last until the buffer is taken back or replaced, and all runs that began before
    /// have ended. Throws `QxHostError` for an unknown parameter, for strings, and for a number of
    /// values that can fit no grid.
    void SetBuffer(QxParameterHandle parameter, std::span<float> values);
    void SetBuffer(const std::string& name, std::span<float> values)
    {
        SetBuffer(m_shader->Handle(name), values);
    }
    /// Takes the buffer back: the parameter stands in memory of the instance again. What the last
    /// run left in it can no longer be read by `Get`. Throws `QxHostError` for an unknown
    /// parameter.
    void ClearBuffer(QxParameterHandle parameter);
    void ClearBuffer(const std::string& name) { ClearBuffer(m_shader->Handle(name)); }
    /// The parameter has its default value again, and no buffer. Throws `QxHostError` for an
    /// unknown parameter.
    void Reset(QxParameterHandle parameter);
    void Reset(const std::string& name) { Reset(m_shader->Handle(name)); }
    /// Later runs take the values of a set in place of those that were set here, until another one
    /// is used; null goes back to these. An input that has a buffer keeps it. The set must outlive
    /// its use. Sets that take turns cost no more than one does, up to four of them. Throws
    /// `QxHostError` if it is one of another shader.
    void Use(const QxParameterSet* set);

    /// A run that takes more steps is ended with a `QxHostError`. Only byte-code is watched.
    void SetStepLimit(std::size_t limit);
    /// A run whose parameters or variables need more memory than this is ended with a
    /// `QxHostError`, before it takes it; each of the two is compared. Locals of a shared object
    /// are not counted. 4 GiB unless it is set.
    void SetMemoryLimit(std::size_t bytes);
    /// A run asks `test` now and then, every few milliseconds unless the scene takes long to
    /// answer, and ends with a `QxHostStopped` when it says so. None is asked after an empty one.
    /// Only byte-code is watched.
    void SetStopTest(QxStopTest test);

    /// Shades the grid: reads its predefined variables and writes those that the shader writes.
    /// Output parameters start from their default values each time. Throws `QxHostError`, also if a
    /// predefined variable that the shader uses is missing; what was written by then stays.
    void Run(const QxHostPoints& points, QxHostScene& scene);
    /// The same with services of the caller's own and that many lights, which they run: whoever
    /// derives from `QxShaderSupport` need not have a `QxHostScene`. A run within `k_depthLimit`
    /// runs of the same instance throws `QxHostError`.
    void Run(const QxHostPoints& points, QxShaderSupport& support, unsigned int lightCount);

    /// A parameter as the last run left it: one value if it is uniform, else one for each point;
    /// of an array, all of its first element come first. A copy. While the instance runs, the last
    /// run is the last one within that run. Throws `QxHostError` for an unknown parameter.
    [[nodiscard]] QxHostValue Get(QxParameterHandle parameter);
    [[nodiscard]] QxHostValue Get(const std::string& name) { return Get(m_shader->Handle(name)); }
    /// Answers a message with a parameter as the run under way, or else the last one, has it;
    /// before the first run as one would begin. True if there is one of that name, type and length,
    /// which has one value where one is asked for. Throws `QxHostError` if its values cannot be
    /// computed.
    bool Answer(const char* name, const QxMessageValue& value, QxShaderSupport& support,
                const QxVector3& eye);

private:
    friend class QxHostScene;  // runs lights at its own levels

    struct LightValues {
        std::vector<QxVector3> L;
        std::vector<QxRGBColor> Cl;
        std::vector<QxRGBColor> Ol;
    };
    /// What a run needs for itself. Runs within runs have rooms of their own, and so have sizes of
    /// grids that take turns.
    struct Room {
        explicit Room(const QxShader& shader);

        std::unique_ptr<QxShaderRun> run;
        std::vector<QxVar> variables;       // one for each parameter
        std::vector<std::size_t> borrowed;  // parameters that stand in buffers
        std::vector<LightValues> lights;
        std::vector<QxLightInput> lightInputs;
        std::size_t points = 0;     // that the variables are made for; 0: anew
        unsigned long changes = 0;  // of spaces and buffers that they know of
        unsigned long values = 0;   // version of the set
        unsigned long files = 0;    // version of the handles of files; 0: of no scene
        unsigned long lastUse = 0;
        bool busy = false;
    };
    class RoomScope;

    [[nodiscard]] const QxShader::Parameter& At(QxParameterHandle parameter) const;
    [[nodiscard]] const QxParameterSet& Values() const { return m_used ? *m_used : m_own; }
    [[nodiscard]] bool IsFresh(const Room& room) const;
    [[nodiscard]] Room& RoomOfAnswers(QxShaderSupport& support, const QxVector3& eye);
    void CheckPoints(const QxHostPoints& points) const;
    void FindSpaces();
    void Forget(QxParameterHandle parameter);
    void ReturnBuffers(Room& room) const;
    void CheckMemory(std::size_t points) const;
    [[nodiscard]] Room& NewRoom();
    [[nodiscard]] Room& FindRoom(std::size_t points);
    void Shade(const QxHostPoints& points, QxShaderSupport& support, unsigned int lightCount,
               unsigned long files);
    static void UseFiles(Room& room, unsigned long files);
    static void MakeLights(Room& room, std::size_t points, unsigned int count);
    void PrepareVariables(Room& room, std::size_t points, const QxShadingContext& context);
    void MakeVariable(Room& room, std::size_t parameter, std::size_t points);
    void ApplySetting(QxVar& variable, std::size_t parameter, std::size_t points) const;

    std::shared_ptr<const QxShader> m_shader;
    QxHostPoints::Names m_wanted = 0;  // what points must have
    QxHostSpaces m_spaces;
    std::vector<const QxFrame3D*> m_spaceList;  // as the shader numbers them
    unsigned long m_spaceChanges = 0;           // that the list knows of; 0: none
    unsigned long m_changes = 1;                // of spaces and buffers
    QxParameterSet m_own;
    const QxParameterSet* m_used = nullptr;             // in place of it
    std::map<std::size_t, std::span<float>> m_buffers;  // by parameter
    std::optional<std::size_t> m_stepLimit;
    std::size_t m_memoryLimit = std::size_t{1} << (sizeof(void*) > 4 ? 32 : 31);
    QxStopTest m_stopTest;
    std::vector<std::unique_ptr<Room>> m_rooms;
    std::vector<Room*> m_running;  // outermost first
    std::vector<Room*> m_last;     // that runs ended in, by how many were around them
    unsigned int m_depth = 0;      // runs at the moment
    unsigned long m_runs = 0;
};
