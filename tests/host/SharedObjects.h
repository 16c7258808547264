#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

/// Compiles many generated C++ files to shared objects in little time.
///
/// The compiler spends most of its time for a small shader on the run-time header and its
/// instantiations. So the header is precompiled, and a batch of shaders is compiled at once. Each
/// shared object is then linked from its batch, with the entry points of one shader under the usual
/// names.
class SharedObjects {
public:
    /// Writes to `folder` and compiles with `compiler`, a command with options such as "g++ -O0".
    SharedObjects(std::filesystem::path folder, std::string compiler)
        : m_folder(std::move(folder)),
          m_compiler(std::move(compiler))
    {
    }

    /// Adds a generated file, and returns the path that its shared object will have.
    std::string Add(const std::string& text);
    /// Builds the files that were added since the last call, in several threads. Returns the
    /// commands that failed, with their messages; empty if all succeed.
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
    std::string m_compiler;
    std::size_t m_count = 0;  // number of files
    std::size_t m_built = 0;  // number of files before the last `Build`
};
