// Tested by tests/host/HostTest.cpp.

#include "host/QxParameterSet.h"

#include "QxHostError.h"

namespace {

using Parameter = QxShader::Parameter;

std::string Describe(const Parameter& parameter)
{
    const std::string array =
        parameter.length == 1 ? "" : "[" + std::to_string(parameter.length) + "]";
    return "Parameter '" + parameter.name + "' is a " + QxTypeName(parameter.type) + array;
}

}  // namespace

std::size_t QxParameterSet::CheckHandle(QxParameterHandle handle) const
{
    const auto number = static_cast<std::size_t>(handle);
    if (number >= m_shader->Parameters().size())
        throw QxHostError("Shader '" + m_shader->Name() + "' has no parameter of that handle");
    return number;
}

const Parameter& QxParameterSet::CheckType(QxParameterHandle handle, const QxHostValue& value) const
{
    const Parameter& parameter = m_shader->Parameters()[CheckHandle(handle)];
    if (!value.Fits(parameter.type))
        throw QxHostError(Describe(parameter) + ", but is set to a " + QxTypeName(value.type));
    return parameter;
}

void QxParameterSet::Set(QxParameterHandle handle, const QxHostValue& value)
{
    const Parameter& parameter = CheckType(handle, value);
    if (value.Count() != parameter.length)
        throw QxHostError(Describe(parameter) + ", but is set to " + std::to_string(value.Count()) +
                          " values");
    m_settings[static_cast<std::size_t>(handle)] = Setting{value, false};
    m_version = QxNextVersion();
}

void QxParameterSet::SetForEachPoint(QxParameterHandle handle, const QxHostValue& values)
{
    const Parameter& parameter = CheckType(handle, values);
    if (!parameter.varying)
        throw QxHostError("Parameter '" + parameter.name +
                          "' is uniform, it has one value for all points");
    m_settings[static_cast<std::size_t>(handle)] = Setting{values, true};
    m_version = QxNextVersion();
}

void QxParameterSet::Reset(QxParameterHandle parameter)
{
    std::optional<Setting>& setting = m_settings[CheckHandle(parameter)];
    if (!setting)
        return;
    setting.reset();
    m_version = QxNextVersion();
}
