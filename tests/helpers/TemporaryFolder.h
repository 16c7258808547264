#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

/// A new folder, which is the working directory as long as the object exists and is removed with
/// it.
class TemporaryFolder {
public:
    TemporaryFolder() : m_before(std::filesystem::current_path())
    {
        std::string path = std::filesystem::temp_directory_path() / "shaderqx-XXXXXX";
        m_path = mkdtemp(path.data());
        std::filesystem::current_path(m_path);
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::current_path(m_before, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Writes a file, after creating its parent folders.
    static void Write(const std::string& name, const std::string& text)
    {
        const auto parent = std::filesystem::path(name).parent_path();
        if (!parent.empty())
            std::filesystem::create_directories(parent);
        std::ofstream(name) << text;
    }

    /// Returns the contents of a file; empty if it cannot be read.
    [[nodiscard]] static std::string Read(const std::string& name)
    {
        std::ifstream file(name);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

private:
    std::filesystem::path m_before;
    std::filesystem::path m_path;
};
