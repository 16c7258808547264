#pragma once

#include <filesystem>
#include <string_view>

/// A folder below the one for temporary files, gone with the object.
class SqxScratchFolder {
public:
    /// `name`: what its name begins with. Throws `std::runtime_error`.
    explicit SqxScratchFolder(std::string_view name);
    ~SqxScratchFolder();
    SqxScratchFolder(const SqxScratchFolder&) = delete;
    SqxScratchFolder& operator=(const SqxScratchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
    /// Before the object goes.
    void Remove() const;

private:
    std::filesystem::path m_path;
};
