#pragma once

#include <string>
#include <vector>

#include "sqx/SqxElfFile.h"
#include "sqx/SqxShader.h"

/// The files of the libraries whose shadeops a shader calls. They are only read here: a library
/// that is cut short, or lacks what the shader needs, is refused before any of its code runs.
class QxShadeopLibraries {
public:
    /// Looks for the files in the folders, in their order. Throws `QxHostError` for one that is not
    /// there, or is no library.
    QxShadeopLibraries(const std::vector<std::string>& names,
                       const std::vector<std::string>& folders);

    /// The declarations in the shadeop's table. Throws `QxHostError` if the library does not list
    /// the shadeop with these functions, or lacks one of them.
    [[nodiscard]] std::vector<std::string> DeclarationsOf(const SqxDSOFunction& shadeop) const;
    /// Absolute.
    [[nodiscard]] const std::string& PathOf(std::size_t library) const
    {
        return m_libraries[library].path;
    }
    [[nodiscard]] std::size_t Count() const { return m_libraries.size(); }

private:
    struct Library {
        std::string name;
        std::string path;
        SqxElfFile file;
    };

    std::vector<Library> m_libraries;
};
