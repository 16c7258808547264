#include "host/QxShaderInstance.h"

#include "host/QxHostError.h"

namespace {

using Parameter = QxShaderObject::Parameter;

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

QxShaderInstance::QxShaderInstance(const QxShaderObject& object)
    : m_object(object),
      m_variables(object.Parameters().size())
{
    m_object.Declare(m_variables);
}

std::size_t QxShaderInstance::Find(const std::string& name) const
{
    const auto& parameters = m_object.Parameters();
    for (std::size_t i = 0; i < parameters.size(); ++i)
        if (parameters[i].name == name)
            return i;
    throw QxHostError("Shader '" + m_object.Path() + "' has no parameter '" + name + "'");
}

std::size_t QxShaderInstance::FindFitting(const std::string& name, const QxHostValue& value) const
{
    const std::size_t number = Find(name);
    const Parameter& parameter = m_object.Parameters()[number];
    if (!value.Fits(parameter.type))
        throw QxHostError(Told(parameter) + ", but is set to a " + QxTypeName(value.type));
    return number;
}

void QxShaderInstance::Set(const std::string& name, const QxHostValue& value)
{
    const std::size_t number = FindFitting(name, value);
    const Parameter& parameter = m_object.Parameters()[number];
    if (value.Count() != parameter.length)
        throw QxHostError(Told(parameter) + ", but is set to " + std::to_string(value.Count()) +
                          " values");
    m_settings.insert_or_assign(number, Setting{value, false});
    m_points = 0;
}

void QxShaderInstance::SetForEachPoint(const std::string& name, const QxHostValue& values)
{
    const std::size_t number = FindFitting(name, values);
    if (!m_object.Parameters()[number].varying)
        throw QxHostError("Parameter '" + name + "' is uniform, it has one value for all points");
    m_settings.insert_or_assign(number, Setting{values, true});
    m_points = 0;
}

void QxShaderInstance::Run(QxHostGrid& grid, QxHostScene& scene)
{
    scene.BeginGrid(grid);
    Run(grid, scene, scene.LightCount());
}

void QxShaderInstance::Run(QxHostGrid& grid, QxShaderSupport& support, unsigned int lightCount)
{
    const QxVector3 eye = grid.Values<QxVector3>("E")[0];
    const QxShadingContext context = m_object.Context(support, eye);
    PrepareVariables(grid.Size(), context);
    MakeLights(grid.Size(), lightCount);
    m_object.Evaluate(grid.Layout().columns, grid.Layout().rows, context, grid.Hidden(),
                      m_variables, m_lightInputs);
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
        if (!anew && !m_object.Parameters()[i].output)
            continue;
        m_variables[i].Resize(points);
        ApplySetting(i, points);
        initialize = initialize || m_variables[i].UseDefaultValue();
    }
    if (initialize)
        m_object.Initialize(context, m_variables);
    m_points = points;
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
        throw QxHostError("Parameter '" + variable.Name() + "' is set to " +
                          std::to_string(value.Count()) + " values, but the grid needs " +
                          std::to_string(count));
    WithElements(value, [&](const void* elements) { variable.SetValueForEachPoint(elements); });
}

QxHostValue QxShaderInstance::Get(const std::string& name)
{
    QxVar& variable = m_variables[Find(name)];
    const std::size_t count = variable.Length() * variable.Points();
    if (variable.Type() == QxValueType::String) {
        const auto* texts = static_cast<const char* const*>(variable.Value());
        std::vector<std::string> copies;
        for (std::size_t i = 0; i < count; ++i)
            copies.emplace_back(texts[i] ? texts[i] : "");
        return copies;
    }
    const auto* numbers = static_cast<const float*>(variable.Value());
    return {variable.Type(),
            std::vector<float>(numbers, numbers + count * QxFloatCount(variable.Type()))};
}
