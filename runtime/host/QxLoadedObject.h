#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "QxShading.h"
#include "sqx/SqxElfFile.h"
#include "sqx/SqxObjectFacts.h"

/// A shader in a shared object, from loading to unloading. All users of a loaded file share one
/// instance of this class.
class QxLoadedObject {
public:
    /// A handle of the system's loader, with the function that closes it.
    using OpenLibrary = std::unique_ptr<void, int (*)(void*)>;

    /// A counted reference; the file is unloaded when the last one is destroyed.
    using Use = std::unique_ptr<const QxLoadedObject, void (*)(const QxLoadedObject*)>;
    /// Loads the file, or shares it if it is loaded. May be called in any thread. Throws
    /// `QxHostError` if the file is not a library for this machine or cannot be loaded, if it lacks
    /// an entry point of shaders, if its interface has another major or a later minor version, if a
    /// shadeop library is missing, is not a library, or lacks a function that the shader needs, or
    /// if the system did not unload the file after its last use (noticed only if the shader has
    /// parameters).
    [[nodiscard]] static Use Acquire(const std::string& path,
                                     const std::vector<std::string>& shadeopFolders);

    /// For `Acquire`: reads the facts and finds the entry points. Throws `QxHostError` if an entry
    /// point is missing.
    QxLoadedObject(std::string path, OpenLibrary library, const SqxElfFile& file);
    ~QxLoadedObject();
    QxLoadedObject(const QxLoadedObject&) = delete;
    QxLoadedObject& operator=(const QxLoadedObject&) = delete;

    // The types of entry points, as generated C++ declares them.
    using Initialize = void (*)(const QxShadingContext&, QxVar*, const QxFrame3D**);
    using EvaluateSurface = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                     const QxSurfaceHidden&, QxVar*, unsigned int, QxLightInput*);
    using EvaluateDisplacement = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                          const QxSurfaceHidden&, QxVar*);
    using EvaluateImager = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                    const QxImagerHidden&, QxVar*);
    using EvaluateLight = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                   const QxLightHidden&, QxVar*, bool);

    SqxObjectFacts facts;  // from the section that the compiler wrote; may be absent or damaged

    // The interface, from one call of the entry point QxInterrogate. It returns the type and the
    // pointers, whose data belong to the shader. `spaceNames` are the names that it looks up in the
    // space registry of the call, `shadeopLibraries` those that it looks up in the search path.
    QxShaderInterface::QxType type = QxShaderInterface::e_typeSurface;
    const QxVar* variables = nullptr;
    const unsigned char* needsObjectSpace = nullptr;  // by parameter
    const unsigned char* isOutput = nullptr;          // by parameter
    QxToken** predefined = nullptr;
    const QxShaderInterface::QxDataSize* sizes = nullptr;
    std::vector<std::string> spaceNames;
    std::vector<std::string> shadeopLibraries;

    Initialize initialize = nullptr;
    void* evaluate = nullptr;  // an `EvaluateLight` or the like; a volume has that of surfaces
    int (*useRayTracing)() = nullptr;
    int (*modifyPoint)() = nullptr;
    bool hasLightStatement = false;  // `illuminate` or `solar`; older compilers do not record it

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

    /// All loaded objects, by the loader's handle of the file.
    struct Loaded {
        std::mutex mutex;
        std::map<void*, std::unique_ptr<QxLoadedObject>> objects;
    };
    [[nodiscard]] static Loaded& AllLoaded();

    template <class Function>
    void Find(Function& function, const char* name) const;
    static void Release(const QxLoadedObject* object);
    void Register(const std::vector<std::string>& shadeopFolders);
    void CheckVersion() const;
    void ReadInterface(const std::vector<std::string>& shadeopFolders);

    std::string m_path;
    OpenLibrary m_library;
    std::size_t m_users = 0;
    Tokens m_tokens;
    bool m_registered = false;
    const QxFrame3D** m_spaceList = nullptr;  // allocated and freed by the shader
    Interrogate m_interrogate = nullptr;
    void (*m_register)(QxTokenRegistry*) = nullptr;
    void (*m_version)(int*, int*) = nullptr;
    void (*m_destroy)(const QxFrame3D***) = nullptr;
};
