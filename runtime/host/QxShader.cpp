// The first bytes decide the kind of a file: a shared object begins with the magic number of ELF.
// Anything else is passed to the reader of byte-code, which reports what is wrong with it, except a
// source, which has its own report.
//
// `Defaults` computes with every space equal to the current space, so that points and matrices are
// not transformed and have the values that the source specifies.
//
// Tested by tests/host/HostTest.cpp and tests/host/HostFilesTest.cpp.

#include "host/QxShader.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

#include "QxHostError.h"
#include "host/QxByteCodeShader.h"
#include "host/QxHostSpaces.h"
#include "host/QxShaderObject.h"

namespace {

constexpr std::string_view k_sharedObjectMagic = "\177ELF";

std::ifstream OpenFile(const std::string& path)
{
    std::error_code ignored;
    std::ifstream file;
    if (std::filesystem::is_regular_file(path, ignored))
        file.open(path, std::ios::binary);
    if (!file.is_open())
        throw QxHostError("There is no shader file '" + path + "'");
    return file;
}

bool IsSharedObject(std::ifstream& file)
{
    std::string head(k_sharedObjectMagic.size(), '\0');
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    const bool isSharedObject = file && head == k_sharedObjectMagic;
    file.clear();
    file.seekg(0);
    return isSharedObject;
}

/// Throws if the file cannot be read to its end. `read` sets a bit of the stream then, whereas an
/// iterator over the buffer would throw an error of the standard library.
std::string ReadAll(std::ifstream& file, const std::string& path)
{
    std::string bytes;
    std::array<char, 1 << 16> part = {};
    do {
        file.read(part.data(), part.size());
        bytes.append(part.data(), static_cast<std::size_t>(file.gcount()));
    } while (file);
    if (file.bad())
        throw QxHostError("Cannot read '" + path + "'");
    return bytes;
}

/// Discards what the computation of default values prints.
class SupportOfDefaults : public QxShaderSupport {
public:
    void Print(const char*) override {}
};

}  // namespace

std::shared_ptr<const QxShader> QxShader::Open(const std::string& path,
                                               const std::vector<std::string>& shadeopFolders)
{
    std::ifstream file = OpenFile(path);
    if (IsSharedObject(file))
        return std::make_shared<QxShaderObject>(path, shadeopFolders);
    if (std::filesystem::path(path).extension() == ".sl")
        throw QxHostError("'" + path + "' is a source, but a compiled shader was expected");
    return Read(ReadAll(file, path), path, shadeopFolders);
}

std::shared_ptr<const QxShader> QxShader::Read(std::string_view bytes, const std::string& name,
                                               const std::vector<std::string>& shadeopFolders)
{
    if (bytes.starts_with(k_sharedObjectMagic))
        throw QxHostError("'" + name + "' is a shared object, which is opened by its path");
    return std::make_shared<QxByteCodeShader>(bytes, name, shadeopFolders);
}

std::vector<std::optional<QxHostValue>> QxShader::Defaults() const
{
    std::vector<QxVar> variables(m_info.parameters.size());
    ComputeDefaults(variables);
    std::vector<std::optional<QxHostValue>> values(m_info.parameters.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!IsDefaultPerPoint(i))
            values[i] = QxHostValue::Of(variables[i]);
    return values;
}

void QxShader::ComputeDefaults(std::vector<QxVar>& variables) const
{
    QxHostSpaces registry;
    std::vector<const QxFrame3D*> spaces(m_info.spaces.size(), registry.Find("current"));
    SupportOfDefaults support;
    const QxShadingContext context(&support, &registry, spaces.data(), {0, 0, 0});
    Declare(variables);
    NewRun()->Initialize(context, spaces.data(), variables);
}

QxParameterHandle QxShader::Handle(std::string_view name) const
{
    for (std::size_t i = 0; i < m_info.parameters.size(); ++i)
        if (m_info.parameters[i].name == name)
            return static_cast<QxParameterHandle>(i);
    throw QxHostError("Shader '" + m_name + "' has no parameter '" + std::string(name) + "'");
}

const char* QxShader::TypeName(QxShaderInterface::QxType type)
{
    switch (type) {
    case QxShaderInterface::e_typeLight:
        return "light";
    case QxShaderInterface::e_typeSurface:
        return "surface";
    case QxShaderInterface::e_typeVolume:
        return "volume";
    case QxShaderInterface::e_typeDisplacement:
        return "displacement";
    case QxShaderInterface::e_typeImager:
        break;
    }
    return "imager";
}

bool QxShader::Uses(std::string_view predefined) const
{
    return std::find(m_info.predefined.begin(), m_info.predefined.end(), predefined) !=
           m_info.predefined.end();
}

bool QxShader::NeedsObjectSpace() const
{
    return std::any_of(m_info.parameters.begin(), m_info.parameters.end(),
                       [](const Parameter& parameter) { return parameter.needsObjectSpace; });
}
