// The declared type of the parameter decides how a text is read: "1,0.5,0" may be a color or three
// elements of an array.
//
// Tested by tests/sqxshade/SqxShadeTest.cpp.

#include "sqxshade/SqxParameterValues.h"

#include <algorithm>

#include "sqxshade/SqxShadeOptions.h"

namespace {

[[noreturn]] void RefuseCount(const QxShader::Parameter& parameter, const std::string& wanted,
                              const std::string& text)
{
    const std::string array =
        parameter.length == 1 ? "" : "[" + std::to_string(parameter.length) + "]";
    throw SqxPictureError("Parameter '" + parameter.name + "' is a " + QxTypeName(parameter.type) +
                          array + " and takes " + wanted + ", but is set to '" + text + "'");
}

/// A string that is not an array may contain commas.
std::vector<std::string> ReadTexts(const QxShader::Parameter& parameter, const std::string& text)
{
    if (parameter.length == 1)
        return {text};
    std::vector<std::string> texts = SqxSplit(text, ',');
    if (texts.size() != parameter.length)
        RefuseCount(parameter, std::to_string(parameter.length) + " texts", text);
    return texts;
}

}  // namespace

QxHostValue SqxReadParameterValue(const QxShader::Parameter& parameter, const std::string& text)
{
    if (parameter.type == QxValueType::String)
        return ReadTexts(parameter, text);
    std::vector<float> numbers = SqxReadNumbers(text, "value of '" + parameter.name + "'");
    const std::size_t width = QxFloatCount(parameter.type);
    if (width == 3 && parameter.length == 1 && numbers.size() == 1)
        numbers.assign(3, numbers[0]);
    if (numbers.size() != width * parameter.length)
        RefuseCount(parameter, std::to_string(width * parameter.length) + " numbers", text);
    return {parameter.type, std::move(numbers)};
}

std::vector<std::pair<std::string, QxHostValue>>
SqxReadParameterValues(const QxShader& shader, const std::string& name,
                       const std::vector<std::pair<std::string, std::string>>& texts)
{
    const auto& parameters = shader.Parameters();
    std::vector<std::pair<std::string, QxHostValue>> values;
    for (const auto& [wanted, text] : texts) {
        const auto found =
            std::find_if(parameters.begin(), parameters.end(),
                         [&wanted = wanted](const auto& one) { return one.name == wanted; });
        if (found == parameters.end())
            throw SqxPictureError("Shader '" + name + "' has no parameter '" + wanted + "'");
        values.emplace_back(wanted, SqxReadParameterValue(*found, text));
    }
    return values;
}
