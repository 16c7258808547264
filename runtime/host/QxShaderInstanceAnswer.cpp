// Answers to messages with the values of parameters. A run has values for a grid, and its workspace
// answers if it is current. Otherwise the initial values are prepared for one point:
//
//     Set("Kd", 0.8)                 answers 0.8
//     SetForEachPoint("each", ...)   does not answer, since only a grid has these points
//     SetBuffer("sum", ...)          answers the initial value of an output, in other memory
//
// Tested by tests/host/HostTest.cpp and tests/host/HostSceneTest.cpp.

#include "host/QxShaderInstance.h"

#include <algorithm>

/// False if the value of a parameter can only be used for a grid.
bool QxShaderInstance::HasOneValue(std::size_t parameter) const
{
    const QxShader::Parameter& declared = m_shader->Parameters()[parameter];
    const std::span<float> buffer = m_buffers[parameter];
    if (!buffer.empty() && !declared.output)
        return buffer.size() == declared.length * QxFloatCount(declared.type);
    const QxParameterSet::Setting* const setting = Values().Find(parameter);
    return !setting || !setting->forEachPoint || setting->value.Count() == declared.length;
}

/// Prepares the initial values of parameters that have one value. Leaves the buffers of outputs to
/// runs. The workspace serves a run for one point if all parameters have one value.
void QxShaderInstance::PrepareForAnswers(Workspace& workspace, const QxShadingContext& context)
{
    const bool rebuild = workspace.points != 1 || !IsCurrent(workspace);
    workspace.points = 0;
    workspace.changes = m_changes;
    workspace.values = Values().Version();
    bool complete = true;
    bool initialize = false;
    for (std::size_t i = 0; i < workspace.variables.size(); ++i) {
        const bool output = m_shader->Parameters()[i].output;
        if (!rebuild && !output)
            continue;
        QxVar& variable = workspace.variables[i];
        const bool known = HasOneValue(i);
        complete = complete && known;
        if (output)
            std::erase(workspace.buffered, i);
        if (output || !known)
            variable.Resize(1);
        else
            PrepareVariable(workspace, i, 1);
        if (known)
            ApplySetting(variable, i, 1);
        initialize = initialize || (known && variable.UseDefaultValue());
    }
    if (initialize)
        workspace.run->Initialize(context, m_spaceList.data(), workspace.variables);
    workspace.points = complete ? 1 : 0;
}

bool QxShaderInstance::Answer(const char* name, const QxMessageValue& value,
                              QxShaderSupport& support, const QxVector3& eye)
{
    const auto& parameters = m_shader->Parameters();
    const auto found =
        std::find_if(parameters.begin(), parameters.end(), [&](const auto& parameter) {
            return parameter.name == name && parameter.length == value.length &&
                   QxFitsType(parameter.type, value.type);
        });
    if (found == parameters.end())
        return false;
    const auto number = static_cast<std::size_t>(found - parameters.begin());
    Workspace& workspace = WorkspaceForAnswers(support, eye);
    QxVar& variable = workspace.variables[number];
    if (variable.Points() == 1 && !HasOneValue(number))
        return false;
    if (variable.Points() == 1)
        value.Store(variable.Value());
    else if (variable.Points() == value.points)
        value.StoreForEachPoint(variable.Value());
    else
        return false;
    return true;
}
