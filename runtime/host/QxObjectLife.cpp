// The life of a shader: loaded, registered, asked for its version, interrogated, and destroyed when
// the last one who opened it goes; instances initialize and evaluate it in between.
//
// What a shared object keeps is one for the process: the descriptions and the variables that it
// makes, of which every instance has its own, and the shadeops. The list of spaces is made anew for
// whoever interrogates it; so one question with an empty registry tells which names it holds, and
// each instance looks those up where it likes.
//
// Tested by tests/host/HostTest.cpp; tests/host/fakes are shared objects that are no shaders.

#include "host/QxObjectLife.h"

#include <algorithm>
#include <bit>
#include <dlfcn.h>
#include <filesystem>
#include <unistd.h>

#include "QxHostError.h"
#include "host/QxHostSpaces.h"
#include "host/QxShadeopNeeds.h"
#include "sqx/SqxFileHead.h"

namespace {

using OpenLibrary = QxObjectLife::OpenLibrary;

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

/// It is never destroyed, since shaders may go late, from other static objects.
QxObjectLife::Led& QxObjectLife::AllLed()
{
    static Led& led = *new Led;
    return led;
}

QxObjectLife::Use QxObjectLife::Enter(const std::string& path,
                                      const std::vector<std::string>& shadeopFolders)
{
    Led& led = AllLed();
    const std::lock_guard lock(led.mutex);
    const SqxElfFile file = SqxElfFile::Open(path);
    OpenLibrary library = Load(path, file);
    void* const handle = library.get();
    auto found = led.lives.find(handle);
    if (found == led.lives.end()) {
        QxCheckShadeopNeeds(file, shadeopFolders);
        auto life = std::make_unique<QxObjectLife>(path, std::move(library), file);
        life->Begin(shadeopFolders);
        found = led.lives.emplace(handle, std::move(life)).first;
    }
    ++found->second->m_users;
    return {found->second.get(), Leave};
}

void QxObjectLife::Leave(const QxObjectLife* life)
{
    Led& led = AllLed();
    const std::lock_guard lock(led.mutex);
    const auto found = led.lives.find(life->m_library.get());
    if (--found->second->m_users == 0)
        led.lives.erase(found);
}

QxObjectLife::QxObjectLife(std::string path, OpenLibrary library, const SqxElfFile& file)
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

QxObjectLife::~QxObjectLife()
{
    if (m_registered)
        m_destroy(&m_spaceList);
}

void QxObjectLife::Begin(const std::vector<std::string>& shadeopFolders)
{
    m_register(&m_tokens);
    m_registered = true;
    CheckVersion();
    Ask(shadeopFolders);
}

template <class Function>
void QxObjectLife::Find(Function& function, const char* name) const
{
    void* symbol = dlsym(m_library.get(), name);
    if (!symbol)
        throw QxHostError("'" + m_path + "' is no shader, entry point '" + name + "' is missing");
    function = std::bit_cast<Function>(symbol);
}

void QxObjectLife::CheckVersion() const
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

void QxObjectLife::Ask(const std::vector<std::string>& shadeopFolders)
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
