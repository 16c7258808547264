#pragma once

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

/// A shader with values for its parameters and its own spaces, which shades grids.
///
/// An instance is used by one thread at a time; instances of one shader may run in several threads.
/// An answer of the scene may run an instance that is running already, for example where a ray hits
/// the same surface again. An instance must not be destroyed while it runs.
class QxShaderInstance {
public:
    /// The limit of nested runs of an instance, for the `Run` that takes a `QxShaderSupport`.
    static constexpr unsigned int k_depthLimit = 100;

    /// All parameters have their default values. The names of spaces in the shader are looked up in
    /// `Spaces()` and then in `spaces`, which must outlive the instance. Spaces may be defined and
    /// redefined between runs; default values are recomputed then.
    QxShaderInstance(std::shared_ptr<const QxShader> shader, QxHostSpaces& spaces);

    [[nodiscard]] const QxShader& Shader() const { return *m_shader; }
    /// The spaces that belong to this instance only, such as "shader".
    [[nodiscard]] QxHostSpaces& Spaces() { return m_spaces; }
    [[nodiscard]] const QxHostSpaces& Spaces() const { return m_spaces; }

    /// Sets a parameter for later runs, to one value for all points; an array, to the values of all
    /// its elements. Removes the buffer of an input parameter. While a parameter set is used, see
    /// `Use`, runs do not read the value. Throws `QxHostError` for an unknown parameter, and for a
    /// wrong type or number of elements.
    void Set(QxParameterHandle parameter, const QxHostValue& value);
    void Set(const std::string& name, const QxHostValue& value)
    {
        Set(m_shader->Handle(name), value);
    }
    /// As `Set`, with a value for each point, in the layout of `QxHostValue`. Throws `QxHostError`
    /// for an unknown or uniform parameter or a wrong type. The number of values is compared with
    /// the grid when the shader runs.
    void SetForEachPoint(QxParameterHandle parameter, const QxHostValue& values);
    void SetForEachPoint(const std::string& name, const QxHostValue& values)
    {
        SetForEachPoint(m_shader->Handle(name), values);
    }
    /// Makes later runs store a parameter in memory of the caller, without a copy. `values` has the
    /// layout that `Get` returns and exactly the size that the grids need. For an input parameter
    /// the contents are its value, in place of a value that was set before. An output parameter
    /// still starts from its set or default value in each run and its result is written to
    /// `values`; nested runs of the instance write theirs elsewhere. The memory must stay valid
    /// until the buffer is removed or replaced and all runs that began before have ended. Throws
    /// `QxHostError` for an unknown parameter, for strings, and for a size that fits no grid.
    void SetBuffer(QxParameterHandle parameter, std::span<float> values);
    void SetBuffer(const std::string& name, std::span<float> values)
    {
        SetBuffer(m_shader->Handle(name), values);
    }
    /// Removes the buffer of a parameter, which is then stored in the instance again. `Get` can no
    /// longer read what the last run wrote to the buffer. No effect if there is no buffer. Throws
    /// `QxHostError` for an unknown parameter.
    void ClearBuffer(QxParameterHandle parameter);
    void ClearBuffer(const std::string& name) { ClearBuffer(m_shader->Handle(name)); }
    /// Discards the value that was set, so that the parameter has its default value again, and
    /// removes its buffer. A parameter set that is used stays unchanged. Throws `QxHostError` for
    /// an unknown parameter.
    void Reset(QxParameterHandle parameter);
    void Reset(const std::string& name) { Reset(m_shader->Handle(name)); }
    /// Makes later runs use the values of `set`, or of this instance again if `set` is null.
    /// Buffers stay: an input parameter with a buffer does not get the value of the set. The set
    /// must outlive its use. Switching between up to four unchanged sets for grids of one size
    /// copies no values of input parameters, since the instance keeps memory for each set. Throws
    /// `QxHostError` if the set belongs to another `QxShader`.
    void Use(const QxParameterSet* set);

    /// Limits the steps of a run, 10 million by default; a run of more steps throws `QxHostError`.
    /// A step is an instruction that a loop repeats, for the whole grid. Work on texts and lists
    /// has the same limit, for the mean of all points. No effect on a shared object.
    void SetStepLimit(std::size_t limit);
    /// Limits the memory of a run, in bytes; 4 GiB by default, or 2 GiB if pointers have 32 bits. A
    /// run whose parameters or whose variables need more throws `QxHostError` before it allocates
    /// them; the two are compared separately. The local variables of a shared object do not count.
    void SetMemoryLimit(std::size_t bytes);
    /// Sets a test that a run calls every few milliseconds, or less often if the scene takes long
    /// to answer. If it returns true, the run throws `QxHostStopped`. An empty test removes it. No
    /// effect on a shared object.
    void SetStopTest(QxStopTest test);

    /// Shades a grid: reads its predefined variables and writes those that the shader assigns.
    /// Output parameters start from their set or default values in each run. Throws `QxHostError`,
    /// for example if the points lack a predefined variable that the shader uses, and any exception
    /// that an answer of the scene throws. What was written before stays written.
    void Run(const QxHostPoints& points, QxHostScene& scene);
    /// As above, for a host without a `QxHostScene`: `lightCount` is the number of lights that the
    /// `EvaluateLights` of `support` fills. Throws `QxHostError` also if the run is nested in more
    /// than `k_depthLimit` runs of this instance.
    void Run(const QxHostPoints& points, QxShaderSupport& support, unsigned int lightCount);

    /// Returns a copy of a parameter after the last run: one value if it is uniform, else one for
    /// each point, in the layout of `QxHostValue`. While the instance is running, the last run is
    /// the last one nested directly in the current run. Before the first such run, returns zeros or
    /// empty texts for one point. Throws `QxHostError` for an unknown parameter.
    [[nodiscard]] QxHostValue Get(QxParameterHandle parameter);
    [[nodiscard]] QxHostValue Get(const std::string& name) { return Get(m_shader->Handle(name)); }
    /// Answers a message with the value of a parameter in the current run of the instance or, if it
    /// is not running, in its last run. Before the first run, and if values, buffers or spaces have
    /// changed since the last one, answers with the initial value at one point, for which `support`
    /// and `eye` are used, and does not write to buffers. Returns false if there is no parameter of
    /// that name with a fitting type and that number of elements, if its number of points is
    /// neither 1 nor that of `value`, or if its initial value is known only for a grid. Throws
    /// `QxHostError` if initial values cannot be computed, and any exception that an answer throws.
    bool Answer(const char* name, const QxMessageValue& value, QxShaderSupport& support,
                const QxVector3& eye);

private:
    friend class QxHostScene;  // runs lights without a level for each, and counts their runs

    struct LightValues {
        std::vector<QxVector3> L;
        std::vector<QxRGBColor> Cl;
        std::vector<QxRGBColor> Ol;
    };
    /// The memory of a run. Each nested run has its own workspace. If up to four grid sizes or
    /// parameter sets alternate, each of these has its own workspace, too.
    struct Workspace {
        explicit Workspace(const QxShader& shader);

        std::unique_ptr<QxShaderRun> run;
        std::vector<QxVar> variables;       // one for each parameter
        std::vector<std::size_t> buffered;  // parameters that are stored in buffers
        std::vector<LightValues> lights;
        std::vector<QxLightInput> lightInputs;
        std::size_t points = 0;     // number for which `variables` are prepared; 0: not prepared
        unsigned long changes = 0;  // `m_changes` when they were prepared
        unsigned long values = 0;   // version of the parameter set when they were prepared
        unsigned long files = 0;    // version of the file handles; 0: valid for one run only
        unsigned long lastUse = 0;
        bool busy = false;
    };
    class WorkspaceScope;
    class LastRunsScope;

    [[nodiscard]] const QxShader::Parameter& CheckedParameter(QxParameterHandle parameter) const;
    [[nodiscard]] const QxParameterSet& Values() const { return m_used ? *m_used : m_own; }
    [[nodiscard]] bool IsCurrent(const Workspace& workspace) const;
    [[nodiscard]] Workspace& WorkspaceForAnswers(QxShaderSupport& support, const QxVector3& eye);
    void CheckPoints(const QxHostPoints& points) const;
    void FindSpaces();
    void ClearBufferOfInput(QxParameterHandle parameter);
    void ReturnBuffers(Workspace& workspace) const;
    void CheckMemory(std::size_t points) const;
    [[nodiscard]] Workspace& NewWorkspace();
    [[nodiscard]] Workspace& ChooseWorkspace(std::size_t points);
    void Shade(const QxHostPoints& points, QxShaderSupport& support, unsigned int lightCount,
               unsigned long files);
    static void SetFilesVersion(Workspace& workspace, unsigned long files);
    static void PrepareLights(Workspace& workspace, std::size_t points, unsigned int count);
    void PrepareVariables(Workspace& workspace, std::size_t points,
                          const QxShadingContext& context);
    void PrepareVariable(Workspace& workspace, std::size_t parameter, std::size_t points);
    [[nodiscard]] bool HasOneValue(std::size_t parameter) const;
    void PrepareForAnswers(Workspace& workspace, const QxShadingContext& context);
    void ApplySetting(QxVar& variable, std::size_t parameter, std::size_t points) const;

    std::shared_ptr<const QxShader> m_shader;
    QxHostPoints::Names m_wanted = 0;  // predefined variables that points must have
    QxHostSpaces m_spaces;
    std::vector<const QxFrame3D*> m_spaceList;  // by the number of the space in the shader
    unsigned long m_spaceChanges = 0;           // `m_spaces.Changes()` when it was filled; 0: never
    unsigned long m_changes = 1;                // counts changes of spaces and buffers
    QxParameterSet m_own;
    const QxParameterSet* m_used = nullptr;   // in place of `m_own` if not null
    std::vector<std::span<float>> m_buffers;  // by parameter; empty for none
    std::optional<std::size_t> m_stepLimit;
    std::size_t m_memoryLimit = std::size_t{1} << (sizeof(void*) > 4 ? 32 : 31);
    QxStopTest m_stopTest;
    std::vector<std::unique_ptr<Workspace>> m_workspaces;
    std::vector<Workspace*> m_running;  // outermost first
    std::vector<Workspace*> m_last;     // workspace of the last run at each depth
    unsigned int m_depth = 0;           // number of runs in progress
    unsigned long m_runs = 0;           // counts runs, and computations of initial values
};
