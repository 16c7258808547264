#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

/// Builds many generated C++ files into shared objects in little time.
///
/// Most of the time of a small shader goes into the run-time header and what it instantiates, so
/// the header is precompiled, and one compilation serves a batch of shaders. Each shared object is
/// then linked from its batch, with the entry points of one shader under their names.
class SharedObjects {
public:
    /// Works in that folder, with the compiler at that level, such as "-O0".
    SharedObjects(std::filesystem::path folder, std::string level)
        : m_folder(std::move(folder)),
          m_level(std::move(level))
    {
    }

    /// Adds a generated file, and gives the path that its shared object will have.
    std::string Add(const std::string& text);
    /// Builds what was added. The messages of the compiler if it refuses something; else empty.
    [[nodiscard]] std::string Build();

private:
    struct Batch {
        std::size_t first;
        std::size_t end;
    };

    [[nodiscard]] std::string Precompile() const;
    void WriteBatch(const Batch& batch) const;
    [[nodiscard]] std::string BuildBatch(const Batch& batch) const;
    [[nodiscard]] std::string Run(const std::string& command, const std::string& name) const;
    [[nodiscard]] std::string Compiler() const;

    std::filesystem::path m_folder;
    std::string m_level;
    std::size_t m_count = 0;  // of the files
    std::size_t m_built = 0;  // of them
};
