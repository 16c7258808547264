#include "machine/run/QxShaderInfo.h"

#include <algorithm>

#include "sqx/SqxShader.h"

namespace {

QxShaderInterface::QxType TypeOf(int code)
{
    static constexpr QxShaderInterface::QxType types[] = {
        QxShaderInterface::e_typeSurface, QxShaderInterface::e_typeDisplacement,
        QxShaderInterface::e_typeVolume, QxShaderInterface::e_typeLight,
        QxShaderInterface::e_typeImager};
    return types[code];
}

/// True for `illuminate` and `solar`, which give a light a position or a direction.
bool IsLightStatement(const SqxInstruction& instruction)
{
    const SqxPrimitive primitive = SqxBlock::Primitive(instruction);
    return primitive == SqxPrimitive::ILLUMINATE || primitive == SqxPrimitive::ILLUMINATE_NO_CONE ||
           primitive == SqxPrimitive::SOLAR;
}

}  // namespace

void QxShaderInfo::Declare(std::vector<QxVar>& variables) const
{
    for (std::size_t i = 0; i < variables.size(); ++i)
        variables[i].Declare(parameters[i].name.c_str(), parameters[i].type, parameters[i].varying,
                             parameters[i].length);
}

QxShaderInfo QxInfoOf(const SqxShader& shader)
{
    QxShaderInfo info;
    info.type = TypeOf(shader.shaderType);
    for (std::size_t i = 0; i < shader.parameterCount; ++i) {
        const SqxVariable& parameter = shader.Parameter(i);
        info.parameters.push_back(
            {.name = parameter.name,
             .type = static_cast<QxValueType>(static_cast<int>(parameter.type)),
             .varying = !parameter.uniform,
             .length = static_cast<std::size_t>(parameter.size),
             .output = parameter.output,
             .space = parameter.space,
             .needsObjectSpace = parameter.needsObjectSpace});
    }
    for (std::size_t i = 0; i < shader.predefinedCount; ++i)
        info.predefined.push_back(shader.variables[i].name);
    info.spaces = shader.spaces;
    info.shadeopLibraries = shader.libraries;
    info.tracesRays = shader.usesRaytracing;
    info.modifiesP = shader.modifiesP;
    info.isAmbient = info.type == QxShaderInterface::e_typeLight &&
                     std::none_of(shader.main.instructions.begin(), shader.main.instructions.end(),
                                  IsLightStatement);
    return info;
}
