// docs/listing.md describes the schema. It has a version, `k_version`, which changes when an
// existing member changes its meaning, not when one is added.
//
// JSON must be UTF-8, but texts in a file may not be. Invalid bytes become the replacement
// character.
//
// Tested by tests/listing, which reads the objects with an independent JSON reader.

#include <cmath>

#include "sqx/SqxNumberText.h"
#include "sqxdump/SqxListing.h"
#include "json/SqxOrderedJson.h"

namespace {

using Facts = SqxShaderFacts;

constexpr int k_version = 1;
SqxOrderedJson TextOrNull(std::string_view text)
{
    return text.empty() ? SqxOrderedJson() : SqxOrderedJson(text);
}

SqxOrderedJson Flag(std::optional<bool> flag)
{
    return flag ? SqxOrderedJson(*flag) : SqxOrderedJson();
}

/// Returns a number, but a text for infinities and NaN, which JSON lacks.
SqxOrderedJson Number(float number)
{
    return std::isfinite(number) ? SqxJsonNumber(number) : SqxOrderedJson(SqxNumberText(number));
}

/// Returns an array of `element(i)` for each number i below `count`.
template <class Element>
SqxOrderedJson List(std::size_t count, Element element)
{
    SqxOrderedJson list = SqxOrderedJson::array();
    for (std::size_t i = 0; i < count; ++i)
        list.push_back(element(i));
    return list;
}

SqxOrderedJson Element(const QxHostValue& value, std::size_t element)
{
    if (value.type == QxValueType::String)
        return value.texts[element];
    const std::size_t width = QxFloatCount(value.type);
    const auto number = [&](std::size_t i) { return Number(value.numbers[element * width + i]); };
    return width == 1 ? number(0) : List(width, number);
}

SqxOrderedJson Value(const Facts::Parameter& parameter)
{
    if (!parameter.value)
        return nullptr;
    const QxHostValue& value = *parameter.value;
    if (!parameter.arrayLength)
        return Element(value, 0);
    return List(value.Count(), [&](std::size_t i) { return Element(value, i); });
}

const char* DefaultName(Facts::Default defaultIs)
{
    switch (defaultIs) {
    case Facts::Default::Known:
        return "known";
    case Facts::Default::PerPoint:
        return "perPoint";
    case Facts::Default::ZeroOrPerPoint:
        return "zeroOrPerPoint";
    case Facts::Default::Unknown:
        break;
    }
    return "unknown";
}

SqxOrderedJson ParameterJson(const Facts::Parameter& parameter)
{
    const auto& length = parameter.arrayLength;
    SqxOrderedJson json;
    json["name"] = parameter.name;
    json["class"] = TextOrNull(SqxClassName(parameter));
    json["detail"] = parameter.varying ? "varying" : "uniform";
    json["type"] = QxTypeName(parameter.type);
    json["arrayLength"] = length ? SqxOrderedJson(*length) : SqxOrderedJson();
    json["space"] = TextOrNull(parameter.space);
    json["output"] = Flag(parameter.output);
    json["default"] = Value(parameter);
    json["defaultIs"] = DefaultName(parameter.defaultIs);
    return json;
}

SqxOrderedJson PredefinedJson(const Facts::Predefined& variable)
{
    SqxOrderedJson json;
    json["name"] = variable.name;
    json["read"] = Flag(variable.read);
    json["written"] = Flag(variable.written);
    return json;
}

SqxOrderedJson FaultJson(const std::optional<Facts::Fault>& fault)
{
    SqxOrderedJson json;
    if (fault) {
        json["line"] = fault->line;
        json["message"] = fault->message;
    }
    return json;
}

}  // namespace

std::string SqxListingJson(const SqxListed& listed, const std::vector<std::string>& wanted)
{
    const Facts& facts = listed.facts;
    const auto parameters = SqxWantedParameters(facts, wanted);
    const auto& libraries = facts.shadeopLibraries;
    SqxOrderedJson json;
    json["version"] = k_version;
    json["file"] = listed.file;
    json["kind"] = facts.kind == Facts::Kind::ByteCode ? "byte-code" : "shared object";
    json["name"] = TextOrNull(listed.title);
    json["type"] = TextOrNull(facts.type);
    json["parameters"] =
        List(parameters.size(), [&](std::size_t i) { return ParameterJson(*parameters[i]); });
    json["usesLights"] = Flag(facts.usesLights);
    json["tracesRays"] = Flag(facts.tracesRays);
    json["modifiesP"] = Flag(facts.modifiesP);
    json["predefined"] = List(facts.predefined.size(),
                              [&](std::size_t i) { return PredefinedJson(facts.predefined[i]); });
    json["shadeopLibraries"] = libraries ? SqxOrderedJson(*libraries) : SqxOrderedJson();
    json["fault"] = FaultJson(facts.fault);
    return SqxJsonLine(json) + '\n';
}
