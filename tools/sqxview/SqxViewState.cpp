// The whole state in one object: a page that missed ten changes needs only the last one.
//
// Tested by tests/sqxview.

#include "sqxview/SqxViewState.h"

#include "sqxshade/SqxParameterValues.h"
#include "sqxshade/SqxShadeCommand.h"
#include "sqxview/SqxViewJson.h"

namespace {

[[nodiscard]] std::string ColorNumbers(const QxRGBColor& color)
{
    return SqxJsonNumbers({color.r, color.g, color.b});
}

[[nodiscard]] std::string VectorNumbers(const QxVector3& vector)
{
    return SqxJsonNumbers({vector.x, vector.y, vector.z});
}

[[nodiscard]] std::string LightState(const SqxPictureLight& light)
{
    return SqxJsonObject()
        .AddText("kind", SqxLightKindWord(light.kind))
        .Add("from", VectorNumbers(light.from))
        .Add("to", VectorNumbers(light.to))
        .Add("color", ColorNumbers(light.color))
        .Add("intensity", SqxJsonNumber(light.intensity))
        .Whole();
}

[[nodiscard]] std::string SettingsState(const SqxPictureSettings& picture)
{
    std::vector<std::string> lights;
    for (const SqxPictureLight& light : picture.lights)
        lights.push_back(LightState(light));
    return SqxJsonObject()
        .AddText("shape", SqxShapeWord(picture.shape))
        .Add("width", std::to_string(picture.width))
        .Add("height", std::to_string(picture.height))
        .Add("samples", std::to_string(picture.samples))
        .Add("background", ColorNumbers(picture.background))
        .Add("color", ColorNumbers(picture.color))
        .Add("opacity", ColorNumbers(picture.opacity))
        .Add("lights", SqxJsonArray(lights))
        .Whole();
}

[[nodiscard]] std::string ExcerptState(const SqxViewExcerpt& excerpt)
{
    std::vector<std::string> lines;
    for (const SqxViewExcerpt::Line& line : excerpt.lines)
        lines.push_back(SqxJsonObject()
                            .Add("number", std::to_string(line.number))
                            .AddText("text", line.text)
                            .AddBool("marked", line.marked)
                            .Whole());
    return SqxJsonObject().AddText("file", excerpt.file).Add("lines", SqxJsonArray(lines)).Whole();
}

/// One array of all elements, whatever the type.
[[nodiscard]] std::string ValueState(const std::optional<QxHostValue>& value)
{
    if (!value)
        return "null";
    if (value->type != QxValueType::String)
        return SqxJsonNumbers(value->numbers);
    std::vector<std::string> texts;
    for (const std::string& text : value->texts)
        texts.push_back(SqxJsonText(text));
    return SqxJsonArray(texts);
}

[[nodiscard]] std::string ParameterState(const QxShader::Parameter& parameter,
                                         const std::optional<QxHostValue>& usual,
                                         const SqxShadeOptions::Shader& values)
{
    SqxJsonObject state;
    state.AddText("name", parameter.name)
        .AddText("type", QxTypeName(parameter.type))
        .Add("length", std::to_string(parameter.length))
        .AddBool("varying", parameter.varying)
        .AddBool("output", parameter.output)
        .AddText("space", parameter.space)
        .Add("default", ValueState(usual));
    for (const auto& [name, text] : values.parameters)
        if (name == parameter.name)
            state.Add("value", ValueState(SqxReadParameterValue(parameter, text)));
    return state.Whole();
}

[[nodiscard]] std::string ShaderState(const SqxViewShader& shader,
                                      const SqxShadeOptions::Shader& values)
{
    std::vector<std::string> excerpts;
    for (const SqxViewExcerpt& excerpt : shader.compiled.excerpts)
        excerpts.push_back(ExcerptState(excerpt));
    std::vector<std::string> parameters;
    if (shader.good)
        for (std::size_t i = 0; i < shader.good->Parameters().size(); ++i)
            parameters.push_back(
                ParameterState(shader.good->Parameters()[i], shader.defaults.at(i), values));
    return SqxJsonObject()
        .AddText("path", values.path)
        .Add("version", std::to_string(shader.version))
        .AddBool("isCompiled", shader.isCompiled)
        .AddBool("isRefused", shader.isCompiled && !shader.compiled.shader)
        .AddText("report", shader.compiled.report)
        .AddText("hint", shader.hint)
        .Add("excerpts", SqxJsonArray(excerpts))
        .Add("parameters", SqxJsonArray(parameters))
        .AddText("listing", shader.listing)
        .Whole();
}

[[nodiscard]] std::string PaintingState(const SqxViewPainting& painting, unsigned long number)
{
    return SqxJsonObject()
        .Add("number", std::to_string(number))
        .AddBool("isOver", painting.isOver)
        .AddBool("isWhole", painting.isWhole)
        .AddBool("isShown", painting.png != nullptr)
        .AddText("fault", painting.fault)
        .AddText("notes", painting.notes)
        .Add("milliseconds", std::to_string(painting.time.count()))
        .Whole();
}

}  // namespace

std::string SqxViewStateText(const SqxViewState& state)
{
    std::vector<std::string> shaders;
    for (std::size_t i = 0; i < state.shaders.size(); ++i)
        shaders.push_back(ShaderState(state.shaders[i], state.shade.shaders.at(i)));
    return SqxJsonObject()
        .Add("version", std::to_string(state.version))
        .Add("settings", SettingsState(state.shade.picture))
        .Add("shaders", SqxJsonArray(shaders))
        .Add("picture", PaintingState(state.painting, state.pictureNumber))
        .Add("timeLimit", std::to_string(state.timeLimit.count()))
        .Add("mostBytes", std::to_string(SqxViewState::k_mostBytes))
        .AddText("command", SqxShadeCommand(state.shade))
        .Whole();
}
