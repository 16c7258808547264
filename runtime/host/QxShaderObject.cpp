// The life of a shader: loaded, registered, asked for its version, interrogated, and destroyed when
// the last one who opened it goes; instances initialize and evaluate it in between.
//
// What a shared object keeps is one for the process: the descriptions and the variables that it
// makes, of which every instance has its own, and the shadeops. The list of spaces is made anew for
// whoever interrogates it; so one question with an empty registry tells which names it holds, and
// each instance looks those up where it likes.
//
// Tested by tests/host/HostTest.cpp; tests/host/fakes are shared objects that are no shaders.

#include "host/QxShaderObject.h"

#include <algorithm>
#include <bit>
#include <dlfcn.h>
#include <filesystem>
#include <map>
#include <mutex>
#include <unistd.h>

#include "QxHostError.h"
#include "host/QxErrorHolder.h"
#include "host/QxHostGrid.h"
#include "host/QxHostSpaces.h"
#include "host/QxShadeopNeeds.h"
#include "sqx/SqxFileHead.h"

namespace {

using OpenLibrary = std::unique_ptr<void, int (*)(void*)>;

OpenLibrary Load(const std::string& path, const SqxElfFile& file)
{
    // The loader would end the process.
    if (!file.IsLibrary())
        throw QxHostError("Cannot load '" + path +
                          "', a shader built with --dso was expected: it is no library of this "
                          "machine, or cut short");
    // A name without a slash would be looked for among the system's libraries.
    const std::string absolute = std::filesystem::absolute(path).string();
    OpenLibrary library(dlopen(absolute.c_str(), RTLD_NOW | RTLD_LOCAL), dlclose);
    if (!library)
        throw QxHostError("Cannot load '" + path +
                          "', a shader built with --dso was expected: " + dlerror());
    return library;
}

/// Drops what a shader says.
class SilentSupport : public QxShaderSupport {
public:
    void Print(const char*) override {}
    void Report(const char*) override {}
};

/// Looks into folders, and keeps what it was asked for.
class ShadeopFolders : public QxSearchPath {
public:
    explicit ShadeopFolders(const std::vector<std::string>& folders) : m_folders(folders) {}
    const char* Find(const char* file) const override
    {
        m_files.emplace_back(file);
        for (const std::string& folder : m_folders) {
            m_found = folder + "/" + file;
            if (access(m_found.c_str(), R_OK) == 0)
                return m_found.c_str();
        }
        return nullptr;
    }
    [[nodiscard]] const std::vector<std::string>& Files() const { return m_files; }

private:
    const std::vector<std::string>& m_folders;
    mutable std::string m_found;
    mutable std::vector<std::string> m_files;
};

}  // namespace

// The entry points are as generated C++ declares them.
class QxShaderObject::Life {
public:
    /// That of the file, with one user more. Throws `QxHostError`.
    static const Life& Enter(const std::string& path,
                             const std::vector<std::string>& shadeopFolders);
    /// The last user to leave ends it.
    static void Leave(const Life& life);

    Life(std::string path, OpenLibrary library);
    ~Life();
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;

    using Initialize = void (*)(const QxShadingContext&, QxVar*, const QxFrame3D**);
    using EvaluateSurface = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                     const QxSurfaceHidden&, QxVar*, unsigned int, QxLightInput*);
    using EvaluateDisplacement = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                          const QxSurfaceHidden&, QxVar*);
    using EvaluateImager = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                    const QxImagerHidden&, QxVar*);
    using EvaluateLight = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                   const QxLightHidden&, QxVar*, bool);

    // What the shader tells of itself.
    QxShaderInterface::QxType type = QxShaderInterface::e_typeSurface;
    const QxVar* variables = nullptr;
    const unsigned char* needsObjectSpace = nullptr;
    const unsigned char* isOutput = nullptr;
    QxToken** predefined = nullptr;
    const QxShaderInterface::QxDataSize* sizes = nullptr;
    std::vector<std::string> spaceNames;
    std::vector<std::string> shadeopLibraries;

    Initialize initialize = nullptr;
    void* evaluate = nullptr;  // one of the above, by the shader's type
    int (*useRayTracing)() = nullptr;
    int (*modifyPoint)() = nullptr;
    bool hasLightStatement = false;  // surely; those of older headers do not say

private:
    using Interrogate = void (*)(const QxSearchPath*, QxSpaceRegistry*, const QxFrame3D***,
                                 QxShaderInterface::QxType*, QxVar**, unsigned char**,
                                 unsigned char**, QxToken***, QxShaderInterface::QxDataSize**);

    class Tokens : public QxTokenRegistry {
    public:
        QxToken* Find(const char* name) override
        {
            const auto entry = m_tokens.emplace(name, QxToken{}).first;
            entry->second.name = entry->first.c_str();
            return &entry->second;
        }

    private:
        std::map<std::string, QxToken> m_tokens;
    };

    /// Lives that are led now, by the loader's handle of the file.
    struct Led {
        std::mutex mutex;
        std::map<void*, std::unique_ptr<Life>> lives;
    };
    [[nodiscard]] static Led& AllLed();

    template <class Function>
    void Find(Function& function, const char* name) const;
    void Begin(const std::vector<std::string>& shadeopFolders);
    void CheckVersion() const;
    void Ask(const std::vector<std::string>& shadeopFolders);

    std::string m_path;
    OpenLibrary m_library;
    std::size_t m_users = 0;
    Tokens m_tokens;
    bool m_registered = false;
    const QxFrame3D** m_spaceList = nullptr;  // made and freed by the shader
    Interrogate m_interrogate = nullptr;
    void (*m_register)(QxTokenRegistry*) = nullptr;
    void (*m_version)(int*, int*) = nullptr;
    void (*m_destroy)(const QxFrame3D***) = nullptr;
};

/// It is never destroyed, since shaders may go late, from other static objects.
QxShaderObject::Life::Led& QxShaderObject::Life::AllLed()
{
    static Led& led = *new Led;
    return led;
}

const QxShaderObject::Life&
QxShaderObject::Life::Enter(const std::string& path, const std::vector<std::string>& shadeopFolders)
{
    Led& led = AllLed();
    const std::lock_guard lock(led.mutex);
    const SqxElfFile file = SqxElfFile::Open(path);
    OpenLibrary library = Load(path, file);
    void* const handle = library.get();
    auto found = led.lives.find(handle);
    if (found == led.lives.end()) {
        QxCheckShadeopNeeds(file, shadeopFolders);
        auto life = std::make_unique<Life>(path, std::move(library));
        life->Begin(shadeopFolders);
        found = led.lives.emplace(handle, std::move(life)).first;
    }
    ++found->second->m_users;
    return *found->second;
}

void QxShaderObject::Life::Leave(const Life& life)
{
    Led& led = AllLed();
    const std::lock_guard lock(led.mutex);
    const auto found = led.lives.find(life.m_library.get());
    if (--found->second->m_users == 0)
        led.lives.erase(found);
}

QxShaderObject::Life::Life(std::string path, OpenLibrary library)
    : m_path(std::move(path)),
      m_library(std::move(library))
{
    Find(m_register, "QxRegister");
    Find(m_version, "QxInterfaceVersion");
    Find(m_interrogate, "QxInterrogate");
    Find(initialize, "QxInitialize");
    Find(evaluate, "QxEvaluate");
    Find(m_destroy, "QxDestroy");
    Find(useRayTracing, "QxUseRayTracing");
    Find(modifyPoint, "QxModifyPoint");
    hasLightStatement = dlsym(m_library.get(), "QxHasLightStatement") != nullptr;
}

QxShaderObject::Life::~Life()
{
    if (m_registered)
        m_destroy(&m_spaceList);
}

void QxShaderObject::Life::Begin(const std::vector<std::string>& shadeopFolders)
{
    m_register(&m_tokens);
    m_registered = true;
    CheckVersion();
    Ask(shadeopFolders);
}

template <class Function>
void QxShaderObject::Life::Find(Function& function, const char* name) const
{
    void* symbol = dlsym(m_library.get(), name);
    if (!symbol)
        throw QxHostError("'" + m_path + "' is no shader, entry point '" + name + "' is missing");
    function = std::bit_cast<Function>(symbol);
}

void QxShaderObject::Life::CheckVersion() const
{
    int major = 0;
    int minor = 0;
    m_version(&major, &minor);
    if (major != k_sqxMajorVersion || minor > k_sqxMinorVersion)
        throw QxHostError("Shader '" + m_path + "' has interface version " + std::to_string(major) +
                          "." + std::to_string(minor) + ", but version " +
                          std::to_string(k_sqxMajorVersion) + "." +
                          std::to_string(k_sqxMinorVersion) + " was expected");
}

void QxShaderObject::Life::Ask(const std::vector<std::string>& shadeopFolders)
{
    const ShadeopFolders searchPath(shadeopFolders);
    QxHostSpaces registry;
    QxVar* made = nullptr;
    unsigned char* isSpaceObject = nullptr;
    unsigned char* isVisibleOutput = nullptr;
    QxShaderInterface::QxDataSize* dataSizes = nullptr;
    m_interrogate(&searchPath, &registry, &m_spaceList, &type, &made, &isSpaceObject,
                  &isVisibleOutput, &predefined, &dataSizes);
    shadeopLibraries = searchPath.Files();
    variables = made;
    needsObjectSpace = isSpaceObject;
    isOutput = isVisibleOutput;
    sizes = dataSizes;
    if (sizes->parameters > 0 && !variables)
        throw QxHostError("Shader '" + m_path + "' was not unloaded after its last use");
    for (std::size_t i = 0; i < sizes->spaces; ++i)
        spaceNames.push_back(*registry.NameOf(m_spaceList[i]));
}

// A shared object keeps nothing between two calls, so that threads need not wait for each other.
class QxShaderObject::Run : public QxShaderRun {
public:
    explicit Run(const Life& life) : m_life(life) {}

    void Initialize(const QxShadingContext& context, const QxFrame3D** spaces,
                    std::vector<QxVar>& variables) override
    {
        QxErrorHolder holder(*context.ShaderSupport(), QxDraws::k_ofDefaults);
        m_life.initialize(context.With(holder), variables.data(), spaces);
        holder.Release();
    }
    void Evaluate(const QxGrid& layout, const QxShadingContext& context,
                  const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                  std::vector<QxLightInput>& lights) override;

private:
    template <class Function, class Hidden, class... Rest>
    void Call(const QxGrid& layout, const QxShadingContext& context,
              const QxHiddenVariables& hidden, std::vector<QxVar>& variables, Rest... rest) const
    {
        std::bit_cast<Function>(m_life.evaluate)(layout.columns, layout.rows, context,
                                                 Hidden(hidden), variables.data(), rest...);
    }

    const Life& m_life;
};

void QxShaderObject::Run::Evaluate(const QxGrid& layout, const QxShadingContext& given,
                                   const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                                   std::vector<QxLightInput>& lights)
{
    QxErrorHolder holder(*given.ShaderSupport());
    const QxShadingContext context = given.With(holder);
    switch (m_life.type) {
    case QxShaderInterface::e_typeLight:
        Call<Life::EvaluateLight, QxLightHidden>(layout, context, hidden, variables, true);
        break;
    case QxShaderInterface::e_typeSurface:
    case QxShaderInterface::e_typeVolume:
        Call<Life::EvaluateSurface, QxSurfaceHidden>(layout, context, hidden, variables,
                                                     static_cast<unsigned int>(lights.size()),
                                                     lights.data());
        break;
    case QxShaderInterface::e_typeDisplacement:
        Call<Life::EvaluateDisplacement, QxSurfaceHidden>(layout, context, hidden, variables);
        break;
    case QxShaderInterface::e_typeImager:
        Call<Life::EvaluateImager, QxImagerHidden>(layout, context, hidden, variables);
        break;
    }
    holder.Release();
}

QxShaderObject::QxShaderObject(const std::string& path,
                               const std::vector<std::string>& shadeopFolders)
    : QxShader(path),
      m_life(Life::Enter(path, shadeopFolders))
{
    ReadInterface();
    ReadDefaultSpaces();
}

QxShaderObject::~QxShaderObject()
{
    Life::Leave(m_life);
}

void QxShaderObject::ReadInterface()
{
    m_type = m_life.type;
    m_spaceNames = m_life.spaceNames;
    m_shadeopLibraries = m_life.shadeopLibraries;
    for (std::size_t i = 0; i < m_life.sizes->parameters; ++i) {
        const QxVar& variable = m_life.variables[i];
        m_parameters.push_back({variable.Name(), variable.Type(), variable.IsVarying(),
                                variable.Length(), m_life.isOutput[i] != 0, "",
                                m_life.needsObjectSpace[i] != 0});
    }
    for (std::size_t i = 0; i < m_life.sizes->predefinedVariables; ++i)
        m_predefined.emplace_back(m_life.predefined[i]->name);
    m_tracesRays = m_life.useRayTracing() != 0;
    m_modifiesP = m_life.modifyPoint() != 0;
    m_isAmbient = m_type == QxShaderInterface::e_typeLight && !m_life.hasLightStatement &&
                  LeavesNoDirection();
}

/// A light without `illuminate` and `solar` clears `L`, all others leave or set it.
bool QxShaderObject::LeavesNoDirection() const
{
    SilentSupport support;
    QxHostSpaces spaces;
    std::vector<const QxFrame3D*> list(m_spaceNames.size(), spaces.Find("current"));
    const QxShadingContext context(&support, &spaces, list.data(), {0, 0, 0});
    std::vector<QxVar> variables(m_parameters.size());
    std::vector<QxLightInput> none;
    QxHostGrid probe(1, 1);
    probe.Set("Ps", QxVector3{0.3F, -7.1F, 5.9F});
    probe.Set("L", QxVector3{1, 1, 1});
    Declare(variables);
    Run run(m_life);
    run.Initialize(context, list.data(), variables);
    run.Evaluate(probe.Layout(), context, probe.Hidden(), variables, none);
    return probe.Values<QxVector3>("L")[0] == QxVector3{0, 0, 0};
}

/// The computation of the default values tells their spaces too.
void QxShaderObject::ReadDefaultSpaces()
{
    std::vector<QxVar> variables(m_parameters.size());
    ComputeDefaults(variables);
    for (std::size_t i = 0; i < variables.size(); ++i)
        m_parameters[i].space = variables[i].DefaultSpace();
}

std::unique_ptr<QxShaderRun> QxShaderObject::NewRun() const
{
    return std::make_unique<Run>(m_life);
}
