#pragma once

#include <filesystem>
#include <string_view>

/// A folder in the system's folder for temporary files, removed with the object.
class SqxScratchFolder {
public:
    /// The folder's name starts with `name`. Throws `std::runtime_error` if it cannot be created.
    explicit SqxScratchFolder(std::string_view name);
    ~SqxScratchFolder();
    SqxScratchFolder(const SqxScratchFolder&) = delete;
    SqxScratchFolder& operator=(const SqxScratchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
    /// Removes the folder and its contents, before the object is destroyed. Ignores errors.
    void Remove() const;

private:
    std::filesystem::path m_path;
};
