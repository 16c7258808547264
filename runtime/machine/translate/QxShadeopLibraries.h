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
    /// Searches the folders, in order, for the files with these names, and reads them. Throws
    /// `QxHostError` if a file is in no folder, or is not a complete library of this machine.
    QxShadeopLibraries(const std::vector<std::string>& names,
                       const std::vector<std::string>& folders);
    /// Returns the absolute path of the first regular file of that name in the folders; "" for
    /// none. Generated code must find the same file, so it searches with this function, too.
    [[nodiscard]] static std::string PathIn(const std::vector<std::string>& folders,
                                            const std::string& library);

    /// Returns the declarations in the shadeop's table. Throws `QxHostError` if there is no table,
    /// or it has no records, if these do not name the init and cleanup functions of the shadeop, or
    /// if the library lacks one of its functions. `shadeop.library` is an index in the names.
    [[nodiscard]] std::vector<std::string> DeclarationsOf(const SqxDSOFunction& shadeop) const;
    /// Returns the absolute path of a library, given its index in the names.
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
