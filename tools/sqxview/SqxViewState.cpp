// The whole state is one JSON object, so a page that has missed ten changes needs only the latest
// state.
//
// Tested by tests/sqxview.

#include "sqxview/SqxViewState.h"

#include <cmath>

#include "sqxshade/SqxParameterValues.h"
#include "sqxshade/SqxShadeCommand.h"
#include "json/SqxOrderedJson.h"

namespace {

/// Returns the number, but null for infinities and NaN, which JSON lacks.
[[nodiscard]] SqxOrderedJson Number(float number)
{
    return std::isfinite(number) ? SqxJsonNumber(number) : SqxOrderedJson();
}

[[nodiscard]] SqxOrderedJson Numbers(const std::vector<float>& numbers)
{
    SqxOrderedJson list = SqxOrderedJson::array();
    for (const float number : numbers)
        list.push_back(Number(number));
    return list;
}

[[nodiscard]] SqxOrderedJson ColorNumbers(const QxRGBColor& color)
{
    return Numbers({color.r, color.g, color.b});
}

[[nodiscard]] SqxOrderedJson VectorNumbers(const QxVector3& vector)
{
    return Numbers({vector.x, vector.y, vector.z});
}

[[nodiscard]] SqxOrderedJson LightState(const SqxPictureLight& light)
{
    SqxOrderedJson state;
    state["kind"] = SqxLightKindWord(light.kind);
    state["from"] = VectorNumbers(light.from);
    state["to"] = VectorNumbers(light.to);
    state["color"] = ColorNumbers(light.color);
    state["intensity"] = Number(light.intensity);
    return state;
}

[[nodiscard]] SqxOrderedJson SettingsState(const SqxPictureSettings& picture)
{
    SqxOrderedJson state;
    state["shape"] = SqxShapeWord(picture.shape);
    state["width"] = picture.width;
    state["height"] = picture.height;
    state["samples"] = picture.samples;
    state["background"] = ColorNumbers(picture.background);
    state["color"] = ColorNumbers(picture.color);
    state["opacity"] = ColorNumbers(picture.opacity);
    SqxOrderedJson& lights = state["lights"] = SqxOrderedJson::array();
    for (const SqxPictureLight& light : picture.lights)
        lights.push_back(LightState(light));
    return state;
}

[[nodiscard]] SqxOrderedJson ExcerptState(const SqxViewExcerpt& excerpt)
{
    SqxOrderedJson state;
    state["file"] = excerpt.file;
    SqxOrderedJson& lines = state["lines"] = SqxOrderedJson::array();
    for (const SqxViewExcerpt::Line& line : excerpt.lines) {
        SqxOrderedJson& shown = lines.emplace_back();
        shown["number"] = line.number;
        shown["text"] = line.text;
        shown["marked"] = line.marked;
    }
    return state;
}

/// Returns all numbers or texts of the value in one array, so a color gives three numbers; null if
/// there is no value.
[[nodiscard]] SqxOrderedJson ValueState(const std::optional<QxHostValue>& value)
{
    if (!value)
        return nullptr;
    return value->type == QxValueType::String ? SqxOrderedJson(value->texts)
                                              : Numbers(value->numbers);
}

[[nodiscard]] SqxOrderedJson ParameterState(const QxShader::Parameter& parameter,
                                            const std::optional<QxHostValue>& usual,
                                            const SqxShadeOptions::Shader& values)
{
    SqxOrderedJson state;
    state["name"] = parameter.name;
    state["type"] = QxTypeName(parameter.type);
    state["length"] = parameter.length;
    state["varying"] = parameter.varying;
    state["output"] = parameter.output;
    state["space"] = parameter.space;
    state["default"] = ValueState(usual);
    for (const auto& [name, text] : values.parameters)
        if (name == parameter.name)
            state["value"] = ValueState(SqxReadParameterValue(parameter, text));
    return state;
}

[[nodiscard]] SqxOrderedJson ShaderState(const SqxViewShader& shader,
                                         const SqxShadeOptions::Shader& values)
{
    SqxOrderedJson state;
    state["path"] = values.path;
    state["version"] = shader.version;
    state["isCompiled"] = shader.isCompiled;
    state["isRefused"] = shader.isCompiled && !shader.compiled.shader;
    state["report"] = shader.compiled.report;
    state["hint"] = shader.hint;
    SqxOrderedJson& excerpts = state["excerpts"] = SqxOrderedJson::array();
    for (const SqxViewExcerpt& excerpt : shader.compiled.excerpts)
        excerpts.push_back(ExcerptState(excerpt));
    SqxOrderedJson& parameters = state["parameters"] = SqxOrderedJson::array();
    if (shader.good)
        for (std::size_t i = 0; i < shader.good->Parameters().size(); ++i)
            parameters.push_back(
                ParameterState(shader.good->Parameters()[i], shader.defaults.at(i), values));
    state["listing"] = shader.listing;
    return state;
}

[[nodiscard]] SqxOrderedJson PaintingState(const SqxViewPainting& painting, unsigned long number)
{
    SqxOrderedJson state;
    state["number"] = number;
    state["isOver"] = painting.isOver;
    state["isWhole"] = painting.isWhole;
    state["isShown"] = painting.png != nullptr;
    state["fault"] = painting.fault;
    state["notes"] = painting.notes;
    state["milliseconds"] = painting.time.count();
    return state;
}

}  // namespace

std::string SqxViewStateText(const SqxViewState& state)
{
    SqxOrderedJson shown;
    shown["version"] = state.version;
    shown["settings"] = SettingsState(state.shade.picture);
    SqxOrderedJson& shaders = shown["shaders"] = SqxOrderedJson::array();
    for (std::size_t i = 0; i < state.shaders.size(); ++i)
        shaders.push_back(ShaderState(state.shaders[i], state.shade.shaders.at(i)));
    shown["picture"] = PaintingState(state.painting, state.pictureNumber);
    shown["timeLimit"] = state.timeLimit.count();
    shown["mostBytes"] = SqxViewState::k_mostBytes;
    shown["command"] = SqxShadeCommand(state.shade);
    return SqxJsonLine(shown);
}
