// A run, from settings to values:
//
//     Set("Kd", 0.8)     remembered; the number of points is not known yet
//     Run(grid)          spaces, then room for each parameter, then settings, then default values
//                        of what has no setting, then the shader
//
// Room and default values stay from one run to the next, since most grids of a picture have one
// size: they are made anew only for another number of points, another setting, or a space that was
// defined since. Outputs alone start from their default values each time, for the last run has
// written over them.
//
// Tested by tests/host/HostTest.cpp; tests/host/life watches the memory.

#include "host/QxShaderInstance.h"

#include "QxHostError.h"

namespace {

using Parameter = QxShader::Parameter;

/// Calls `use` with the value's elements as a variable takes them.
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

std::string Told(const Parameter& parameter)
{
    const std::string array =
        parameter.length == 1 ? "" : "[" + std::to_string(parameter.length) + "]";
    return "Parameter '" + parameter.name + "' is a " + QxTypeName(parameter.type) + array;
}

}  // namespace

QxShaderInstance::QxShaderInstance(std::shared_ptr<const QxShader> shader, QxHostSpaces& spaces)
    : m_shader(std::move(shader)),
      m_run(m_shader->NewRun()),
      m_spaces(spaces),
      m_variables(m_shader->Parameters().size())
{
    m_shader->Declare(m_variables);
}

std::size_t QxShaderInstance::Find(const std::string& name) const
{
    const auto& parameters = m_shader->Parameters();
    for (std::size_t i = 0; i < parameters.size(); ++i)
        if (parameters[i].name == name)
            return i;
    throw QxHostError("Shader '" + m_shader->Name() + "' has no parameter '" + name + "'");
}

std::size_t QxShaderInstance::FindFitting(const std::string& name, const QxHostValue& value) const
{
    const std::size_t number = Find(name);
    const Parameter& parameter = m_shader->Parameters()[number];
    if (!value.Fits(parameter.type))
        throw QxHostError(Told(parameter) + ", but is set to a " + QxTypeName(value.type));
    return number;
}

void QxShaderInstance::Set(const std::string& name, const QxHostValue& value)
{
    const std::size_t number = FindFitting(name, value);
    const Parameter& parameter = m_shader->Parameters()[number];
    if (value.Count() != parameter.length)
        throw QxHostError(Told(parameter) + ", but is set to " + std::to_string(value.Count()) +
                          " values");
    m_settings.insert_or_assign(number, Setting{value, false});
    m_points = 0;
}

void QxShaderInstance::SetForEachPoint(const std::string& name, const QxHostValue& values)
{
    const std::size_t number = FindFitting(name, values);
    if (!m_shader->Parameters()[number].varying)
        throw QxHostError("Parameter '" + name + "' is uniform, it has one value for all points");
    m_settings.insert_or_assign(number, Setting{values, true});
    m_points = 0;
}

void QxShaderInstance::SetBuffer(const std::string& name, std::span<float> values)
{
    const std::size_t number = Find(name);
    if (m_shader->Parameters()[number].type == QxValueType::String)
        throw QxHostError("Parameter '" + name + "' is a string, which no buffer of numbers holds");
    m_buffers.insert_or_assign(number, values);
    m_points = 0;
}

void QxShaderInstance::Run(const QxHostPoints& points, QxHostScene& scene)
{
    scene.BeginGrid(points);
    Run(points, scene, scene.LightCount());
}

void QxShaderInstance::Run(const QxHostPoints& points, QxShaderSupport& support,
                           unsigned int lightCount)
{
    CheckPoints(points);
    FindSpaces();
    const QxShadingContext context(&support, &m_spaces, m_spaceList.data(), points.E);
    const std::size_t count = points.layout.Size();
    PrepareVariables(count, context);
    MakeLights(count, lightCount);
    m_run->Evaluate(points.layout, context, points.variables, m_variables, m_lightInputs);
}

/// A surface gets what belongs to a light from its lights.
void QxShaderInstance::CheckPoints(const QxHostPoints& points) const
{
    const bool isLight = m_shader->Type() == QxShaderInterface::e_typeLight;
    for (const std::string& name : m_shader->Predefined()) {
        const bool isOfLight = name == "L" || name == "Cl" || name == "Ol";
        if ((isLight || !isOfLight) && !points.Has(name))
            throw QxHostError("Shader '" + m_shader->Name() + "' uses '" + name +
                              "', but the points have none");
    }
}

/// Default values depend on the spaces.
void QxShaderInstance::FindSpaces()
{
    const unsigned long changes = m_spaces.Changes();
    if (changes == m_spaceChanges)
        return;
    m_spaceChanges = changes;
    m_points = 0;
    m_spaceList.clear();
    for (const std::string& name : m_shader->SpaceNames())
        m_spaceList.push_back(m_spaces.Find(name));
}

void QxShaderInstance::MakeLights(std::size_t points, unsigned int count)
{
    m_lights.resize(count);
    m_lightInputs.clear();
    for (LightValues& light : m_lights) {
        light.L.assign(points, {0, 0, 0});
        light.Cl.assign(points, {0, 0, 0});
        light.Ol.assign(points, {0, 0, 0});
        m_lightInputs.push_back({light.L.data(), light.Cl.data(), light.Ol.data()});
    }
}

/// What no run has changed, and no other size of the grid, stays as it is.
void QxShaderInstance::PrepareVariables(std::size_t points, const QxShadingContext& context)
{
    const bool anew = points != m_points;
    bool initialize = false;
    for (std::size_t i = 0; i < m_variables.size(); ++i) {
        if (!anew && !m_shader->Parameters()[i].output)
            continue;
        MakeRoom(i, points);
        ApplySetting(i, points);
        initialize = initialize || m_variables[i].UseDefaultValue();
    }
    if (initialize)
        m_run->Initialize(context, m_spaceList.data(), m_variables);
    m_points = points;
}

void QxShaderInstance::MakeRoom(std::size_t parameter, std::size_t points)
{
    QxVar& variable = m_variables[parameter];
    const auto found = m_buffers.find(parameter);
    if (found == m_buffers.end()) {
        variable.Resize(points);
        return;
    }
    const auto [unused, buffer] = *found;
    variable.Borrow(points, buffer.data());
    const std::size_t needed =
        variable.Points() * variable.Length() * QxFloatCount(variable.Type());
    if (buffer.size() != needed)
        throw QxHostError(std::string("The buffer of parameter '") + variable.Name() + "' holds " +
                          std::to_string(buffer.size()) + " numbers, but the grid needs " +
                          std::to_string(needed));
    if (!m_shader->Parameters()[parameter].output)
        variable.KeepValue();
}

void QxShaderInstance::ApplySetting(std::size_t parameter, std::size_t points)
{
    const auto found = m_settings.find(parameter);
    if (found == m_settings.end())
        return;
    const auto& [value, forEachPoint] = found->second;
    QxVar& variable = m_variables[parameter];
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

QxHostValue QxShaderInstance::Get(const std::string& name)
{
    return QxHostValue::Of(m_variables[Find(name)]);
}
