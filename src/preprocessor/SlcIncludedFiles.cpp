// Tested by tests/preprocessor.

#include "preprocessor/SlcIncludedFiles.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace {

namespace fs = std::filesystem;

/// Returns nothing if the file cannot be read completely.
std::optional<std::string> ReadFile(const std::string& path)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                               &std::fclose);
    if (!file)
        return std::nullopt;
    std::string contents;
    std::error_code failed;
    const auto size = fs::file_size(path, failed);
    contents.resize(failed ? 0 : size);
    contents.resize(std::fread(contents.data(), 1, contents.size(), file.get()));
    // Read on past the queried size: the file may have grown, and some files have no size.
    char buffer[4096];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get()))
        contents.append(buffer, count);
    if (std::ferror(file.get()) != 0)
        return std::nullopt;
    return contents;
}

/// True for a regular file or a named pipe. False for folders, and for devices, whose contents may
/// never end.
bool IsFile(const std::string& path)
{
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    return fs::is_regular_file(status) || fs::is_fifo(status);
}

}  // namespace

std::string_view SlcFolderOf(std::string_view path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash + 1);
}

SlcIncludedFiles::Found SlcIncludedFiles::Find(const std::string& name, bool isQuoted,
                                               std::string_view beside)
{
    if (name.starts_with('/'))
        return Open(name);
    if (isQuoted)
        if (const Found found = Open(std::string(beside) + name); found.outcome != Outcome::Missing)
            return found;
    for (const std::string& folder : m_folders) {
        const std::string start = folder.empty() || folder.ends_with('/') ? folder : folder + '/';
        if (const Found found = Open(start + name); found.outcome != Outcome::Missing)
            return found;
    }
    return {};
}

SlcIncludedFiles::Found SlcIncludedFiles::Open(const std::string& path)
{
    if (const auto known = m_texts.find(path); known != m_texts.end())
        return {Outcome::Found, known->second.get()};
    std::optional<std::string> contents = m_provider ? m_provider(path) : std::nullopt;
    if (!contents) {
        if (!IsFile(path)) {
            m_missing.insert(path);
            return {};
        }
        contents = ReadFile(path);
    }
    if (!contents)
        return {Outcome::Unreadable, nullptr};
    return {Outcome::Found, &Add(path, std::move(*contents))};
}

const SlcSourceText& SlcIncludedFiles::Add(const std::string& path, std::string contents)
{
    auto text = std::make_unique<SlcSourceText>(path, std::move(contents));
    m_read.push_back(path);
    return *(m_texts[path] = std::move(text));
}

std::string SlcIncludedFiles::IdentityOf(const std::string& path)
{
    std::error_code failed;
    const fs::path whole = fs::weakly_canonical(path, failed);
    return failed ? path : whole.string();
}
