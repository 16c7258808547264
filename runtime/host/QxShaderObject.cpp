// The life of a shader: loaded, registered, asked for its version, interrogated, and destroyed when
// its object goes; an instance initializes and evaluates it in between.

#include "host/QxShaderObject.h"

#include <algorithm>
#include <bit>
#include <dlfcn.h>
#include <filesystem>

#include "host/QxHostError.h"

namespace {

constexpr int k_majorVersion = 5;
constexpr int k_minorVersion = 0;

using OpenLibrary = std::unique_ptr<void, int (*)(void*)>;

OpenLibrary Open(const std::string& path)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored))
        throw QxHostError("There is no shader file '" + path + "'");
    // A name without a slash would be looked for among the system's libraries.
    const std::string absolute = std::filesystem::absolute(path).string();
    if (OpenLibrary(dlopen(absolute.c_str(), RTLD_LAZY | RTLD_NOLOAD), dlclose))
        throw QxHostError("Shader '" + path +
                          "' is loaded already, further uses of it must be instances");
    OpenLibrary library(dlopen(absolute.c_str(), RTLD_NOW | RTLD_LOCAL), dlclose);
    if (!library)
        throw QxHostError("Cannot load '" + path +
                          "', a shader built with --dso was expected: " + dlerror());
    return library;
}

}  // namespace

// The entry points are as generated C++ declares them.
class QxShaderObject::Life {
public:
    explicit Life(const std::string& path);
    ~Life();
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;

    void Register();
    void CheckVersion() const;

    using Initialize = void (*)(const QxShadingContext&, QxVar*, const QxFrame3D**);
    using EvaluateSurface = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                     const QxSurfaceHidden&, QxVar*, unsigned int, QxLightInput*);
    using EvaluateDisplacement = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                          const QxSurfaceHidden&, QxVar*);
    using EvaluateImager = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                    const QxImagerHidden&, QxVar*);
    using EvaluateLight = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                   const QxLightHidden&, QxVar*, bool);
    using Interrogate = void (*)(const QxSearchPath*, QxSpaceRegistry*, const QxFrame3D***,
                                 QxShaderInterface::QxType*, QxVar**, unsigned char**,
                                 unsigned char**, QxToken***, QxShaderInterface::QxDataSize**);

    Interrogate interrogate = nullptr;
    Initialize initialize = nullptr;
    void* evaluate = nullptr;  // one of the above, by the shader's type
    int (*useRayTracing)() = nullptr;
    int (*modifyPoint)() = nullptr;

    const QxFrame3D** spaceList = nullptr;  // made and freed by the shader
    QxVar* variables = nullptr;             // likewise

private:
    template <class Function>
    void Find(Function& function, const char* name) const;

    std::string m_path;
    std::unique_ptr<void, int (*)(void*)> m_library;
    QxTokenRegistry m_tokens;
    bool m_registered = false;
    void (*m_register)(QxTokenRegistry*) = nullptr;
    void (*m_version)(int*, int*) = nullptr;
    void (*m_destroy)(const QxFrame3D***) = nullptr;
};

QxShaderObject::Life::Life(const std::string& path) : m_path(path), m_library(Open(path))
{
    Find(m_register, "QxRegister");
    Find(m_version, "QxInterfaceVersion");
    Find(interrogate, "QxInterrogate");
    Find(initialize, "QxInitialize");
    Find(evaluate, "QxEvaluate");
    Find(m_destroy, "QxDestroy");
    Find(useRayTracing, "QxUseRayTracing");
    Find(modifyPoint, "QxModifyPoint");
}

QxShaderObject::Life::~Life()
{
    if (m_registered)
        m_destroy(&spaceList);
}

template <class Function>
void QxShaderObject::Life::Find(Function& function, const char* name) const
{
    void* symbol = dlsym(m_library.get(), name);
    if (!symbol)
        throw QxHostError("'" + m_path + "' is no shader, entry point '" + name + "' is missing");
    function = std::bit_cast<Function>(symbol);
}

void QxShaderObject::Life::Register()
{
    m_register(&m_tokens);
    m_registered = true;
}

void QxShaderObject::Life::CheckVersion() const
{
    int major = 0;
    int minor = 0;
    m_version(&major, &minor);
    if (major != k_majorVersion || minor > k_minorVersion)
        throw QxHostError("Shader '" + m_path + "' has interface version " + std::to_string(major) +
                          "." + std::to_string(minor) + ", but version " +
                          std::to_string(k_majorVersion) + "." + std::to_string(k_minorVersion) +
                          " was expected");
}

QxShaderObject::QxShaderObject(const std::string& path, QxSpaceRegistry& spaces,
                               const std::vector<std::string>& shadeopFolders)
    : m_path(path),
      m_spaces(spaces),
      m_life(std::make_unique<Life>(path))
{
    m_life->Register();
    m_life->CheckVersion();
    ReadInterface(shadeopFolders);
}

QxShaderObject::~QxShaderObject() = default;

void QxShaderObject::ReadInterface(const std::vector<std::string>& shadeopFolders)
{
    const QxSearchPath searchPath(shadeopFolders);
    unsigned char* isSpaceObject = nullptr;
    unsigned char* isVisibleOutput = nullptr;
    QxToken** predefined = nullptr;
    QxShaderInterface::QxDataSize* sizes = nullptr;
    m_life->interrogate(&searchPath, &m_spaces, &m_life->spaceList, &m_type, &m_life->variables,
                        &isSpaceObject, &isVisibleOutput, &predefined, &sizes);
    if (sizes->parameters > 0 && !m_life->variables)
        throw QxHostError("Shader '" + m_path + "' was not unloaded after its last use");
    for (std::size_t i = 0; i < sizes->parameters; ++i) {
        const QxVar& variable = m_life->variables[i];
        m_parameters.push_back({variable.Name(), variable.Type(), variable.IsVarying(),
                                variable.Length(), isVisibleOutput[i] != 0});
    }
    for (std::size_t i = 0; i < sizes->predefinedVariables; ++i)
        m_predefined.emplace_back(predefined[i]->name);
    m_tracesRays = m_life->useRayTracing() != 0;
    m_modifiesP = m_life->modifyPoint() != 0;
}

bool QxShaderObject::Uses(std::string_view predefined) const
{
    return std::find(m_predefined.begin(), m_predefined.end(), predefined) != m_predefined.end();
}

void QxShaderObject::Declare(std::vector<QxVar>& variables) const
{
    for (std::size_t i = 0; i < variables.size(); ++i)
        variables[i].DeclareAs(m_life->variables[i]);
}

QxShadingContext QxShaderObject::Context(QxShaderSupport& support, const QxVector3& eye) const
{
    return {&support, &m_spaces, m_life->spaceList, eye};
}

void QxShaderObject::Initialize(const QxShadingContext& context,
                                std::vector<QxVar>& variables) const
{
    m_life->initialize(context, variables.data(), m_life->spaceList);
}

void QxShaderObject::Evaluate(unsigned int columns, unsigned int rows,
                              const QxShadingContext& context, const QxHiddenVariables& hidden,
                              std::vector<QxVar>& variables,
                              std::vector<QxLightInput>& lights) const
{
    switch (m_type) {
    case QxShaderInterface::e_typeLight:
        std::bit_cast<Life::EvaluateLight>(m_life->evaluate)(
            columns, rows, context, QxLightHidden(hidden), variables.data(), true);
        break;
    case QxShaderInterface::e_typeSurface:
    case QxShaderInterface::e_typeVolume:
        std::bit_cast<Life::EvaluateSurface>(m_life->evaluate)(
            columns, rows, context, QxSurfaceHidden(hidden), variables.data(),
            static_cast<unsigned int>(lights.size()), lights.data());
        break;
    case QxShaderInterface::e_typeDisplacement:
        std::bit_cast<Life::EvaluateDisplacement>(m_life->evaluate)(
            columns, rows, context, QxSurfaceHidden(hidden), variables.data());
        break;
    case QxShaderInterface::e_typeImager:
        std::bit_cast<Life::EvaluateImager>(m_life->evaluate)(
            columns, rows, context, QxImagerHidden(hidden), variables.data());
        break;
    }
}
