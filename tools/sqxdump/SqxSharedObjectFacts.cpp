// Facts of a loaded shared object, as a renderer sees them. There are fewer than in byte-code; the
// others stay unknown.
//
// Tested by tests/run/SqxDumpToolTest.cpp.

#include <algorithm>

#include "host/QxShader.h"
#include "sqxdump/SqxShaderFacts.h"

namespace {

using Facts = SqxShaderFacts;

const char* TypeName(QxShaderInterface::QxType type)
{
    switch (type) {
    case QxShaderInterface::e_typeSurface:
        return "surface";
    case QxShaderInterface::e_typeDisplacement:
        return "displacement";
    case QxShaderInterface::e_typeVolume:
        return "volume";
    case QxShaderInterface::e_typeLight:
        return "light";
    case QxShaderInterface::e_typeImager:
        break;
    }
    return "imager";
}

/// Only surfaces and volumes receive lights. Returns nothing if none of the variables of lights is
/// used, since there may be an `illuminance` whose body does not use them.
std::optional<bool> UsesLights(const QxShader& shader)
{
    if (shader.Type() != QxShaderInterface::e_typeSurface &&
        shader.Type() != QxShaderInterface::e_typeVolume)
        return false;
    if (shader.Uses("L") || shader.Uses("Cl") || shader.Uses("Ol"))
        return true;
    return std::nullopt;
}

bool IsZero(const QxHostValue& value)
{
    return std::ranges::all_of(value.numbers, [](float number) { return number == 0; }) &&
           std::ranges::all_of(value.texts, [](const std::string& text) { return text.empty(); });
}

Facts::Parameter ParameterFacts(const QxShader::Parameter& parameter, QxHostValue value)
{
    Facts::Parameter facts;
    facts.name = parameter.name;
    facts.varying = parameter.varying;
    facts.type = parameter.type;
    if (parameter.length != 1)
        facts.arrayLength = parameter.length;
    facts.space = parameter.space;
    facts.output = parameter.output;
    facts.defaultIs = IsZero(value) ? Facts::Default::ZeroOrPerPoint : Facts::Default::Known;
    facts.value = std::move(value);
    return facts;
}

}  // namespace

SqxShaderFacts SqxSharedObjectFacts(const std::string& path,
                                    const std::vector<std::string>& shadeopFolders)
{
    const auto shader = QxShader::Open(path, shadeopFolders);
    const auto values = shader->Defaults();
    Facts facts;
    facts.kind = Facts::Kind::SharedObject;
    facts.type = TypeName(shader->Type());
    for (std::size_t i = 0; i < values.size(); ++i)
        facts.parameters.push_back(ParameterFacts(shader->Parameters()[i], *values[i]));
    facts.usesLights = UsesLights(*shader);
    facts.tracesRays = shader->TracesRays();
    facts.modifiesP = shader->ModifiesP();
    for (const std::string& name : shader->Predefined())
        facts.predefined.push_back({name, std::nullopt, std::nullopt});
    facts.shadeopLibraries = shader->ShadeopLibraries();
    return facts;
}
