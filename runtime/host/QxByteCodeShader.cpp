#include "host/QxByteCodeShader.h"

#include "host/QxHostError.h"

QxByteCodeShader::QxByteCodeShader(std::string_view, const std::string& name,
                                   const std::vector<std::string>&)
    : QxShader(name)
{
    throw QxHostError("Shader '" + name + "' is byte-code, a shader built with --dso was expected");
}

void QxByteCodeShader::Initialize(const QxShadingContext&, const QxFrame3D**,
                                  std::vector<QxVar>&) const
{
}

void QxByteCodeShader::Evaluate(const QxGrid&, const QxShadingContext&, const QxHiddenVariables&,
                                std::vector<QxVar>&, std::vector<QxLightInput>&) const
{
}

bool QxByteCodeShader::IsDefaultPerPoint(std::size_t) const
{
    return false;
}
