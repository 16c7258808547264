#pragma once

#include <filesystem>
#include <string>

#include "helpers/TemporaryFolder.h"

/// A temporary folder for compiled shaders.
class ShaderFolder : public TemporaryFolder {
public:
    /// Compiles the shader, whose name must be `name`, and returns the path of the compiled file.
    /// `compilerOptions` are for the C++ compiler. Fails the current test if a compiler fails.
    [[nodiscard]] std::string Build(const std::string& name, const std::string& source,
                                    const std::string& options = "-O2 --dso",
                                    const std::string& compilerOptions = "-O0") const;
    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path = std::filesystem::current_path();
};
