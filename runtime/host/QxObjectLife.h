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

/// A shader in a shared object from when it is loaded until it is destroyed and unloaded: one for
/// all that open the file meanwhile.
class QxObjectLife {
public:
    using OpenLibrary = std::unique_ptr<void, int (*)(void*)>;

    /// One use of it; the last one to go ends it.
    using Use = std::unique_ptr<const QxObjectLife, void (*)(const QxObjectLife*)>;
    /// That of the file. Throws `QxHostError`.
    [[nodiscard]] static Use Enter(const std::string& path,
                                   const std::vector<std::string>& shadeopFolders);

    QxObjectLife(std::string path, OpenLibrary library, const SqxElfFile& file);
    ~QxObjectLife();
    QxObjectLife(const QxObjectLife&) = delete;
    QxObjectLife& operator=(const QxObjectLife&) = delete;

    // The entry points, as generated C++ declares them.
    using Initialize = void (*)(const QxShadingContext&, QxVar*, const QxFrame3D**);
    using EvaluateSurface = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                     const QxSurfaceHidden&, QxVar*, unsigned int, QxLightInput*);
    using EvaluateDisplacement = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                          const QxSurfaceHidden&, QxVar*);
    using EvaluateImager = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                    const QxImagerHidden&, QxVar*);
    using EvaluateLight = void (*)(unsigned int, unsigned int, const QxShadingContext&,
                                   const QxLightHidden&, QxVar*, bool);

    SqxObjectFacts facts;  // that the compiler wrote down

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
        std::map<void*, std::unique_ptr<QxObjectLife>> lives;
    };
    [[nodiscard]] static Led& AllLed();

    template <class Function>
    void Find(Function& function, const char* name) const;
    static void Leave(const QxObjectLife* life);
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
