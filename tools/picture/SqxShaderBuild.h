#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "process/SqxEndSignals.h"
#include "process/SqxScratchFolder.h"

/// How a source is compiled.
struct SqxBuildOptions {
    bool sharedObject = false;         // in place of byte-code
    std::vector<std::string> folders;  // of included files and shadeop libraries, absolute
    std::vector<std::string> definitions;

    /// Returns the folders in which the compiled shader finds the shadeop libraries that the
    /// compiler has found: the working directory, then `folders`.
    [[nodiscard]] std::vector<std::string> LibraryFolders() const;
};

/// Compiles sources in a temporary folder that is removed with the object.
class SqxShaderBuild {
public:
    /// Create it before other threads: the folder is also removed if a signal ends the program,
    /// see `SqxEndSignals`. Throws `std::runtime_error` if there is no folder for temporary files.
    SqxShaderBuild();
    SqxShaderBuild(const SqxShaderBuild&) = delete;
    SqxShaderBuild& operator=(const SqxShaderBuild&) = delete;

    /// Compiles a source and returns the path of the shader, a file that exists as long as this
    /// object. Throws `SqxPictureError` if the source does not exist or does not compile; then
    /// `Messages` says why. Throws another `std::runtime_error` for an option that the compiler
    /// does not accept, or if its files cannot be created.
    [[nodiscard]] std::string Build(const std::string& source, const SqxBuildOptions& options);
    /// The messages of the compiler in the last build.
    [[nodiscard]] const std::string& Messages() const { return m_messages; }

private:
    [[nodiscard]] std::filesystem::path NewFolder();

    SqxScratchFolder m_folder;
    SqxEndSignals m_signals;
    int m_builds = 0;
    std::string m_messages;
};
