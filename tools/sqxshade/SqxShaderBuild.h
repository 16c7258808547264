#pragma once

#include <filesystem>
#include <string>

#include "sqxshade/SqxShadeOptions.h"

/// Builds sources with the compiler that stands beside this program, in a folder that goes with
/// the object.
class SqxShaderBuild {
public:
    SqxShaderBuild() = default;
    ~SqxShaderBuild();
    SqxShaderBuild(const SqxShaderBuild&) = delete;
    SqxShaderBuild& operator=(const SqxShaderBuild&) = delete;

    /// The shared object made of a source. The compiler's messages go to standard error. Throws
    /// `SqxShadeError` if it fails.
    [[nodiscard]] std::string Build(const std::string& source, const SqxShadeOptions& options);

private:
    [[nodiscard]] std::filesystem::path NewFolder();

    std::filesystem::path m_folder;  // empty before the first build
    int m_builds = 0;
};
