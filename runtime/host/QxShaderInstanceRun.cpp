// The steps from settings to a run:
//
//     Set("Kd", 0.8)     stores the value, since the number of points is not known yet
//     Run(grid)          looks spaces up, allocates the parameters, assigns the values that were
//                        set, computes the default values of all others, and runs the shader
//
// Memory and values are kept from one run to the next, since most grids of a picture have the same
// size. They are rebuilt only for another number of points, or after a value, a buffer or a space
// was changed. Otherwise only outputs get their initial values before a run, since the last run has
// overwritten them; if one of these is a default value, all default values are computed again.
//
// All of this is stored in a workspace. A nested run uses a workspace that no other run is using.
// If grids of up to four sizes alternate, each size has its own workspace, so that runs allocate
// memory only for the first grid of each size.
//
// Tested by tests/host/HostTest.cpp; tests/host/life watches the memory.

#include "host/QxShaderInstance.h"

#include <algorithm>
#include <new>

#include "QxHostError.h"

namespace {

using Parameter = QxShader::Parameter;

/// Calls `use` with a pointer to the elements of a value: floats, or pointers to texts. The
/// pointers are valid only during the call.
template <class Use>
void WithElements(const QxHostValue& value, const Use& use)
{
    if (value.type != QxValueType::String) {
        use(static_cast<const void*>(value.numbers.data()));
        return;
    }
    std::vector<const char*> texts;
    for (const std::string& text : value.texts)
        texts.push_back(text.c_str());
    use(static_cast<const void*>(texts.data()));
}

}  // namespace

QxShaderInstance::Workspace::Workspace(const QxShader& shader)
    : run(shader.NewRun()),
      variables(shader.Parameters().size())
{
    shader.Declare(variables);
}

/// Makes a workspace that of the innermost run as long as the object exists, and then that of the
/// last run at this depth.
class QxShaderInstance::WorkspaceScope {
public:
    WorkspaceScope(QxShaderInstance& instance, Workspace& workspace)
        : m_instance(instance),
          m_workspace(workspace)
    {
        workspace.busy = true;
        workspace.lastUse = ++instance.m_runs;
        instance.m_last.resize(instance.m_depth + 1);
        instance.m_last[instance.m_depth++] = nullptr;
        instance.m_running.push_back(&workspace);
    }
    ~WorkspaceScope()
    {
        m_workspace.busy = false;
        m_instance.m_running.pop_back();
        m_instance.m_last[--m_instance.m_depth] = &m_workspace;
        m_instance.ReturnBuffers(m_workspace);
    }
    WorkspaceScope(const WorkspaceScope&) = delete;
    WorkspaceScope& operator=(const WorkspaceScope&) = delete;

private:
    QxShaderInstance& m_instance;
    Workspace& m_workspace;
};

/// Protects the results of the last run: after this object `Get` returns the same as before it,
/// although another run has taken place, also if an exception is thrown.
class QxShaderInstance::LastRunsScope {
public:
    explicit LastRunsScope(QxShaderInstance& instance)
        : m_instance(instance),
          m_last(instance.m_last)
    {
        // A busy workspace is not reused.
        if (Workspace* const last = Last())
            last->busy = true;
    }
    ~LastRunsScope()
    {
        if (Workspace* const last = Last()) {
            last->busy = false;
            m_instance.ReturnBuffers(*last);
        }
        m_instance.m_last.swap(m_last);
    }
    LastRunsScope(const LastRunsScope&) = delete;
    LastRunsScope& operator=(const LastRunsScope&) = delete;

private:
    [[nodiscard]] Workspace* Last() const { return m_last.empty() ? nullptr : m_last[0]; }

    QxShaderInstance& m_instance;
    std::vector<Workspace*> m_last;
};

/// Throws if the parameters need more memory than the limit. Computes in floating point, so that no
/// sum or product of numbers from an untrusted file overflows.
void QxShaderInstance::CheckMemory(std::size_t points) const
{
    double bytes = 0;
    for (const Parameter& parameter : m_shader->Parameters()) {
        const std::size_t element = parameter.type == QxValueType::String
                                        ? sizeof(char*)
                                        : QxFloatCount(parameter.type) * sizeof(float);
        bytes += static_cast<double>(parameter.varying ? points : 1) *
                 static_cast<double>(parameter.length) * static_cast<double>(element);
    }
    if (bytes > static_cast<double>(m_memoryLimit))
        throw QxHostError("The parameters of shader '" + m_shader->Name() +
                          "' need more memory for " + std::to_string(points) +
                          " points than the limit of " + std::to_string(m_memoryLimit) + " bytes");
}

QxShaderInstance::Workspace& QxShaderInstance::NewWorkspace()
{
    auto workspace = std::make_unique<Workspace>(*m_shader);
    if (m_stepLimit)
        workspace->run->SetStepLimit(*m_stepLimit);
    workspace->run->SetMemoryLimit(m_memoryLimit);
    workspace->run->SetStopTest(m_stopTest);
    m_workspaces.push_back(std::move(workspace));
    return *m_workspaces.back();
}

/// True if the workspace is prepared, and no value, buffer or space has changed since then, so only
/// outputs must be reset.
bool QxShaderInstance::IsCurrent(const Workspace& workspace) const
{
    return workspace.points != 0 && workspace.changes == m_changes &&
           workspace.values == Values().Version();
}

/// Returns a free workspace that has current values for that many points. If there is none, returns
/// a free one without current values, or else a new one if less than four are free, or else the
/// least recently used one. Throws `QxHostError` if the values would need more memory than the
/// limit.
QxShaderInstance::Workspace& QxShaderInstance::ChooseWorkspace(std::size_t points)
{
    constexpr unsigned int k_spare = 4;
    Workspace* oldest = nullptr;
    unsigned int free = 0;
    for (const auto& workspace : m_workspaces) {
        if (workspace->busy)
            continue;
        if (workspace->points == points && IsCurrent(*workspace))
            return *workspace;
        ++free;
        // A workspace without current values comes first, then the least recently used one.
        const auto isBetter = [&](const Workspace& other) {
            return IsCurrent(*workspace) == IsCurrent(other) ? workspace->lastUse < other.lastUse
                                                             : IsCurrent(other);
        };
        if (!oldest || isBetter(*oldest))
            oldest = workspace.get();
    }
    CheckMemory(points);
    const bool another = free == 0 || (free < k_spare && IsCurrent(*oldest));
    return another ? NewWorkspace() : *oldest;
}

void QxShaderInstance::Run(const QxHostPoints& points, QxHostScene& scene)
{
    const QxHostScene::GridScope scope(scene, points, this);
    Shade(points, scene, scene.LightCount(), scene.FilesVersion());
}

void QxShaderInstance::Run(const QxHostPoints& points, QxShaderSupport& support,
                           unsigned int lightCount)
{
    if (m_depth > k_depthLimit)
        throw QxHostError("Shader '" + m_shader->Name() + "' is run within " +
                          std::to_string(m_depth) + " runs of itself, which is too deep");
    // A scene that is passed as a reference to its base class needs its level too.
    std::optional<QxHostScene::GridScope> scope;
    auto* const scene = dynamic_cast<QxHostScene*>(&support);
    if (scene)
        scope.emplace(*scene, points, this);
    Shade(points, support, lightCount, scene ? scene->FilesVersion() : 0);
}

/// `files`: version of the file handles that `support` returns; 0 if they are valid for this run
/// only.
void QxShaderInstance::Shade(const QxHostPoints& points, QxShaderSupport& support,
                             unsigned int lightCount, unsigned long files)
{
    QxHostPoints::Check(points.layout);
    CheckPoints(points);
    FindSpaces();
    const std::size_t count = points.layout.Size();
    try {
        Workspace& workspace = ChooseWorkspace(count);
        const WorkspaceScope scope(*this, workspace);
        const QxShadingContext context(&support, &m_spaces, m_spaceList.data(), points.E);
        SetFilesVersion(workspace, files);
        PrepareVariables(workspace, count, context);
        PrepareLights(workspace, count, lightCount);
        workspace.run->Evaluate(points.layout, context, points.variables, workspace.variables,
                                workspace.lightInputs);
    } catch (const std::bad_alloc&) {
        throw QxHostError("There is no memory to run shader '" + m_shader->Name() + "' on " +
                          std::to_string(count) + " points");
    }
}

void QxShaderInstance::CheckPoints(const QxHostPoints& points) const
{
    const QxHostPoints::Names missing = m_wanted & ~points.Present();
    if (missing == 0)
        return;
    for (const std::string& name : m_shader->Predefined())
        if ((QxHostPoints::Named(name) & missing) != 0)
            throw QxHostError("Shader '" + m_shader->Name() + "' uses '" + name +
                              "', but the points have none");
}

/// Looks the shader's spaces up again if a definition has changed; default values depend on them.
void QxShaderInstance::FindSpaces()
{
    const unsigned long changes = m_spaces.Changes();
    if (changes == m_spaceChanges)
        return;
    m_spaceChanges = changes;
    ++m_changes;
    // Outer runs keep a pointer to the list, so it must not move.
    m_spaceList.resize(m_shader->SpaceNames().size());
    for (std::size_t i = 0; i < m_spaceList.size(); ++i)
        m_spaceList[i] = m_spaces.Find(m_shader->SpaceNames()[i]);
}

void QxShaderInstance::SetFilesVersion(Workspace& workspace, unsigned long files)
{
    if (files == 0 || files != workspace.files)
        workspace.run->ForgetFiles();
    workspace.files = files;
}

void QxShaderInstance::PrepareLights(Workspace& workspace, std::size_t points, unsigned int count)
{
    workspace.lights.resize(count);
    workspace.lightInputs.clear();
    for (LightValues& light : workspace.lights) {
        light.L.assign(points, {0, 0, 0});
        light.Cl.assign(points, {0, 0, 0});
        light.Ol.assign(points, {0, 0, 0});
        workspace.lightInputs.push_back({light.L.data(), light.Cl.data(), light.Ol.data()});
    }
}

/// Rebuilds the values of all parameters if they are not current, or else only those of outputs.
void QxShaderInstance::PrepareVariables(Workspace& workspace, std::size_t points,
                                        const QxShadingContext& context)
{
    const bool rebuild = points != workspace.points || !IsCurrent(workspace);
    if (rebuild)
        workspace.points = 0;  // so that an error below leaves it unprepared
    workspace.changes = m_changes;
    workspace.values = Values().Version();
    bool initialize = false;
    for (std::size_t i = 0; i < workspace.variables.size(); ++i) {
        if (!rebuild && !m_shader->Parameters()[i].output)
            continue;
        PrepareVariable(workspace, i, points);
        ApplySetting(workspace.variables[i], i, points);
        initialize = initialize || workspace.variables[i].UseDefaultValue();
    }
    if (initialize)
        workspace.run->Initialize(context, m_spaceList.data(), workspace.variables);
    workspace.points = points;
}

void QxShaderInstance::PrepareVariable(Workspace& workspace, std::size_t parameter,
                                       std::size_t points)
{
    QxVar& variable = workspace.variables[parameter];
    const std::span<float> buffer = m_buffers[parameter];
    const bool output = m_shader->Parameters()[parameter].output;
    if (buffer.empty() || (output && m_depth > 1)) {
        variable.Resize(points);
        return;
    }
    const std::size_t places = variable.IsVarying() ? points : 1;
    const std::size_t needed = places * variable.Length() * QxFloatCount(variable.Type());
    if (buffer.size() != needed) {
        variable.Resize(points);
        throw QxHostError(std::string("The buffer of parameter '") + variable.Name() + "' holds " +
                          std::to_string(buffer.size()) + " numbers, but the grid needs " +
                          std::to_string(needed));
    }
    variable.Borrow(points, buffer.data());
    if (std::find(workspace.buffered.begin(), workspace.buffered.end(), parameter) ==
        workspace.buffered.end())
        workspace.buffered.push_back(parameter);
    if (!output)
        variable.KeepValue();
}

void QxShaderInstance::ApplySetting(QxVar& variable, std::size_t parameter,
                                    std::size_t points) const
{
    const QxParameterSet::Setting* const setting = Values().Find(parameter);
    if (!setting || !variable.UseDefaultValue())
        return;
    const auto& [value, forEachPoint] = *setting;
    if (!forEachPoint) {
        WithElements(value, [&](const void* elements) { variable.SetValue(elements); });
        return;
    }
    const std::size_t count = points * variable.Length();
    if (value.Count() != count)
        throw QxHostError(std::string("Parameter '") + variable.Name() + "' is set to " +
                          std::to_string(value.Count()) + " values, but the grid needs " +
                          std::to_string(count));
    WithElements(value, [&](const void* elements) { variable.SetValueForEachPoint(elements); });
}

QxShaderInstance::Workspace& QxShaderInstance::WorkspaceForAnswers(QxShaderSupport& support,
                                                                   const QxVector3& eye)
{
    if (!m_running.empty())
        return *m_running.back();
    FindSpaces();
    if (!m_last.empty() && m_last[0] && IsCurrent(*m_last[0]))
        return *m_last[0];
    const LastRunsScope last(*this);
    Workspace& workspace = ChooseWorkspace(1);
    const WorkspaceScope scope(*this, workspace);
    const QxShadingContext context(&support, &m_spaces, m_spaceList.data(), eye);
    SetFilesVersion(workspace, 0);
    PrepareForAnswers(workspace, context);
    return workspace;
}
