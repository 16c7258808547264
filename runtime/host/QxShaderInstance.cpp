// The settings of an instance: they are stored here, since the number of points is not known yet,
// and QxShaderInstanceRun.cpp applies them when the shader runs.
//
// Tested by tests/host/HostTest.cpp.

#include "host/QxShaderInstance.h"

#include "QxHostError.h"

namespace {

using Parameter = QxShader::Parameter;

}  // namespace

QxShaderInstance::QxShaderInstance(std::shared_ptr<const QxShader> shader, QxHostSpaces& spaces)
    : m_shader(std::move(shader)),
      m_spaces(spaces),
      m_own(m_shader),
      m_buffers(m_shader->Parameters().size())
{
    // Except in light shaders, these three variables come from the lights.
    const bool isLight = m_shader->Type() == QxShaderInterface::e_typeLight;
    for (const std::string& name : m_shader->Predefined())
        if (isLight || (name != "L" && name != "Cl" && name != "Ol"))
            m_wanted |= QxHostPoints::Named(name);
}

const Parameter& QxShaderInstance::CheckedParameter(QxParameterHandle parameter) const
{
    const auto number = static_cast<std::size_t>(parameter);
    if (number >= m_shader->Parameters().size())
        throw QxHostError("Shader '" + m_shader->Name() + "' has no parameter of that handle");
    return m_shader->Parameters()[number];
}

void QxShaderInstance::Set(QxParameterHandle parameter, const QxHostValue& value)
{
    m_own.Set(parameter, value);
    ClearBufferOfInput(parameter);
}

void QxShaderInstance::SetForEachPoint(QxParameterHandle parameter, const QxHostValue& values)
{
    m_own.SetForEachPoint(parameter, values);
    ClearBufferOfInput(parameter);
}

void QxShaderInstance::SetBuffer(QxParameterHandle handle, std::span<float> values)
{
    const Parameter& parameter = CheckedParameter(handle);
    if (parameter.type == QxValueType::String)
        throw QxHostError("Parameter '" + parameter.name +
                          "' is a string, which no buffer of numbers holds");
    const std::size_t ofPoint = parameter.length * QxFloatCount(parameter.type);
    const bool fits = parameter.varying ? !values.empty() && values.size() % ofPoint == 0
                                        : values.size() == ofPoint;
    if (!fits)
        throw QxHostError("The buffer of parameter '" + parameter.name + "' holds " +
                          std::to_string(values.size()) + " numbers, but " +
                          std::to_string(ofPoint) + " are needed" +
                          (parameter.varying ? " for each point" : ""));
    ClearBuffer(handle);
    if (!parameter.output)
        m_own.Reset(handle);
    m_buffers[static_cast<std::size_t>(handle)] = values;
    ++m_changes;
}

void QxShaderInstance::ClearBuffer(QxParameterHandle parameter)
{
    static_cast<void>(CheckedParameter(parameter));
    std::span<float>& buffer = m_buffers[static_cast<std::size_t>(parameter)];
    if (buffer.empty())
        return;
    buffer = {};
    ++m_changes;
    for (const auto& workspace : m_workspaces)
        if (!workspace->busy)
            ReturnBuffers(*workspace);
}

void QxShaderInstance::Reset(QxParameterHandle parameter)
{
    ClearBuffer(parameter);
    m_own.Reset(parameter);
}

/// Removes the buffer of an input parameter, which has a new value now.
void QxShaderInstance::ClearBufferOfInput(QxParameterHandle parameter)
{
    if (!CheckedParameter(parameter).output)
        ClearBuffer(parameter);
}

void QxShaderInstance::Use(const QxParameterSet* set)
{
    if (set && &set->Shader() != m_shader.get())
        throw QxHostError("The set is one of shader '" + set->Shader().Name() + "', not of '" +
                          m_shader->Name() + "'");
    m_used = set;
}

/// Detaches parameters from buffers that were removed or replaced, since the host may free these.
void QxShaderInstance::ReturnBuffers(Workspace& workspace) const
{
    std::erase_if(workspace.buffered, [&](std::size_t parameter) {
        QxVar& variable = workspace.variables[parameter];
        if (m_buffers[parameter].data() == variable.Value())
            return false;
        variable.Resize(1);
        workspace.points = 0;
        return true;
    });
}

void QxShaderInstance::SetStepLimit(std::size_t limit)
{
    m_stepLimit = limit;
    for (const auto& workspace : m_workspaces)
        workspace->run->SetStepLimit(limit);
}

void QxShaderInstance::SetMemoryLimit(std::size_t bytes)
{
    if (bytes < m_memoryLimit)
        ++m_changes;  // so that the next run checks the memory of parameters
    m_memoryLimit = bytes;
    for (const auto& workspace : m_workspaces)
        workspace->run->SetMemoryLimit(bytes);
}

void QxShaderInstance::SetStopTest(QxStopTest test)
{
    m_stopTest = std::move(test);
    for (const auto& workspace : m_workspaces)
        workspace->run->SetStopTest(m_stopTest);
}

QxHostValue QxShaderInstance::Get(QxParameterHandle handle)
{
    const Parameter& parameter = CheckedParameter(handle);
    Workspace* const workspace = m_depth < m_last.size() ? m_last[m_depth] : nullptr;
    if (workspace)
        return QxHostValue::Of(workspace->variables[static_cast<std::size_t>(handle)]);
    QxVar none;
    none.Declare(parameter.name.c_str(), parameter.type, parameter.varying, parameter.length);
    return QxHostValue::Of(none);
}
