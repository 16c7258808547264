// The calls in the order that a shared object requires: load, register, version, interrogate, then
// any number of calls of initialize and evaluate, and destroy when its last user releases it.
//
// A shared object has one copy of its descriptions, variables and shadeops for the whole process;
// instances use separate variables. Interrogate looks the spaces of the shader up in a registry and
// allocates a list of their frames. It is called once, with a registry without spaces of the host,
// to get their names; each instance then looks these names up in its own registry.
//
// Tested by tests/host/HostFilesTest.cpp, also with shared objects that must be refused
// (tests/host/fakes).

#include "host/QxLoadedObject.h"

#include <algorithm>
#include <bit>
#include <dlfcn.h>
#include <filesystem>

#include "QxHostError.h"
#include "host/QxHostSpaces.h"
#include "host/QxShadeopNeeds.h"
#include "machine/translate/QxShadeopLibraries.h"
#include "sqx/SqxFileHead.h"

namespace {

using OpenLibrary = QxLoadedObject::OpenLibrary;

OpenLibrary Load(const std::string& path, const SqxElfFile& file)
{
    // The system's loader may crash on a file that is not a library or is truncated.
    if (!file.IsLibrary())
        throw QxHostError("Cannot load '" + path +
                          "', a shader built with --dso was expected: it is no library of this "
                          "machine, or cut short");
    // The loader searches the system's folders for a name without a slash.
    const std::string absolute = std::filesystem::absolute(path).string();
    OpenLibrary library(dlopen(absolute.c_str(), RTLD_NOW | RTLD_LOCAL), dlclose);
    if (!library)
        throw QxHostError("Cannot load '" + path +
                          "', a shader built with --dso was expected: " + dlerror());
    return library;
}

/// Searches folders for shadeop libraries, and records the name of each library that was searched
/// for, found or not.
class ShadeopFolders : public QxSearchPath {
public:
    explicit ShadeopFolders(const std::vector<std::string>& folders) : m_folders(folders) {}
    const char* Find(const char* file) const override
    {
        m_files.emplace_back(file);
        m_found = QxShadeopLibraries::PathIn(m_folders, file);
        return m_found.empty() ? nullptr : m_found.c_str();
    }
    [[nodiscard]] const std::vector<std::string>& Files() const { return m_files; }

private:
    const std::vector<std::string>& m_folders;
    mutable std::string m_found;
    mutable std::vector<std::string> m_files;
};

}  // namespace

/// Never destroyed, since destructors of other static objects may still release shaders.
QxLoadedObject::Loaded& QxLoadedObject::AllLoaded()
{
    static Loaded& loaded = *std::make_unique<Loaded>().release();
    return loaded;
}

QxLoadedObject::Use QxLoadedObject::Acquire(const std::string& path,
                                            const std::vector<std::string>& shadeopFolders)
{
    Loaded& loaded = AllLoaded();
    const std::lock_guard lock(loaded.mutex);
    const SqxElfFile file = SqxElfFile::Open(path);
    OpenLibrary library = Load(path, file);
    void* const handle = library.get();
    auto found = loaded.objects.find(handle);
    if (found == loaded.objects.end()) {
        QxCheckShadeopNeeds(file, shadeopFolders);
        auto object = std::make_unique<QxLoadedObject>(path, std::move(library), file);
        object->Register(shadeopFolders);
        found = loaded.objects.emplace(handle, std::move(object)).first;
    }
    ++found->second->m_users;
    return {found->second.get(), Release};
}

void QxLoadedObject::Release(const QxLoadedObject* object)
{
    Loaded& loaded = AllLoaded();
    const std::lock_guard lock(loaded.mutex);
    const auto found = loaded.objects.find(object->m_library.get());
    if (--found->second->m_users == 0)
        loaded.objects.erase(found);
}

QxLoadedObject::QxLoadedObject(std::string path, OpenLibrary library, const SqxElfFile& file)
    : facts(file),
      m_path(std::move(path)),
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
    hasLightStatement =
        facts.HasLightStatement() || dlsym(m_library.get(), "QxHasLightStatement") != nullptr;
}

QxLoadedObject::~QxLoadedObject()
{
    if (m_registered)
        m_destroy(&m_spaceList);
}

void QxLoadedObject::Register(const std::vector<std::string>& shadeopFolders)
{
    m_register(&m_tokens);
    m_registered = true;
    CheckVersion();
    ReadInterface(shadeopFolders);
}

template <class Function>
void QxLoadedObject::Find(Function& function, const char* name) const
{
    void* symbol = dlsym(m_library.get(), name);
    if (!symbol)
        throw QxHostError("'" + m_path + "' is no shader, entry point '" + name + "' is missing");
    function = std::bit_cast<Function>(symbol);
}

void QxLoadedObject::CheckVersion() const
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

void QxLoadedObject::ReadInterface(const std::vector<std::string>& shadeopFolders)
{
    const ShadeopFolders searchPath(shadeopFolders);
    QxHostSpaces registry;
    QxVar* shaderVariables = nullptr;
    unsigned char* isSpaceObject = nullptr;
    unsigned char* isVisibleOutput = nullptr;
    QxShaderInterface::QxDataSize* dataSizes = nullptr;
    m_interrogate(&searchPath, &registry, &m_spaceList, &type, &shaderVariables, &isSpaceObject,
                  &isVisibleOutput, &predefined, &dataSizes);
    shadeopLibraries = searchPath.Files();
    variables = shaderVariables;
    needsObjectSpace = isSpaceObject;
    isOutput = isVisibleOutput;
    sizes = dataSizes;
    if (sizes->parameters > 0 && !variables)
        throw QxHostError("Shader '" + m_path + "' was not unloaded after its last use");
    for (std::size_t i = 0; i < sizes->spaces; ++i)
        spaceNames.push_back(*registry.NameOf(m_spaceList[i]));
}
