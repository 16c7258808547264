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

    /// Where what is built finds the shadeop libraries that the compiler has found: the working
    /// directory comes first, as there.
    [[nodiscard]] std::vector<std::string> LibraryFolders() const;
};

/// Compiles sources in a folder that goes with the object.
class SqxShaderBuild {
public:
    /// Before other threads: the folder also goes if a signal ends the program, see
    /// `SqxEndSignals`. Throws `std::runtime_error` if there is no place for temporary files.
    SqxShaderBuild();
    SqxShaderBuild(const SqxShaderBuild&) = delete;
    SqxShaderBuild& operator=(const SqxShaderBuild&) = delete;

    /// The shader's file made of a source; it stays for the life of the object. Throws
    /// `SqxPictureError` if it fails.
    [[nodiscard]] std::string Build(const std::string& source, const SqxBuildOptions& options);
    /// What the compiler said in the last build.
    [[nodiscard]] const std::string& Messages() const { return m_messages; }

private:
    [[nodiscard]] std::filesystem::path NewFolder();

    SqxScratchFolder m_folder;
    SqxEndSignals m_signals;
    int m_builds = 0;
    std::string m_messages;
};
