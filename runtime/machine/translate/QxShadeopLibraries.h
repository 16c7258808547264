#pragma once

#include <string>
#include <vector>

#include "sqx/SqxElfFile.h"
#include "sqx/SqxShader.h"

/// The files of the libraries whose shadeops a shader calls. They are only read here: a library
/// that is truncated, or lacks a function that the shader needs, is rejected before any of its code
/// runs.
class QxShadeopLibraries {
public:
    /// Searches the folders for the files, in order. Throws `QxHostError` for a file that does not
    /// exist or is not a library.
    QxShadeopLibraries(const std::vector<std::string>& names,
                       const std::vector<std::string>& folders);

    /// Returns the declarations in the shadeop's table. Throws `QxHostError` if the table does not
    /// list the shadeop with its init and cleanup functions, or the library lacks one of the three.
    [[nodiscard]] std::vector<std::string> DeclarationsOf(const SqxDSOFunction& shadeop) const;
    /// Returns the absolute path of a library.
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
