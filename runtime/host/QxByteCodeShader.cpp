#include "host/QxByteCodeShader.h"

#include "host/QxHostError.h"

QxByteCodeShader::QxByteCodeShader(std::string_view, const std::string& name,
                                   const std::vector<std::string>&)
    : QxShader(name)
{
    throw QxHostError("Shader '" + name + "' is byte-code, a shader built with --dso was expected");
}

std::unique_ptr<QxShaderRun> QxByteCodeShader::NewRun() const
{
    return nullptr;
}

bool QxByteCodeShader::IsDefaultPerPoint(std::size_t) const
{
    return false;
}
