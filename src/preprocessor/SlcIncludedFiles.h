#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "preprocessor/SlcSourceText.h"

/// Finds and reads the files of a source; reads the file at each path only once.
class SlcIncludedFiles {
public:
    /// Returns contents to use instead of those of the file on disk, such as the text in an editor;
    /// nothing if the file on disk is to be read.
    using Provider = std::function<std::optional<std::string>(const std::string& path)>;

    enum class Outcome { Found, Missing, Unreadable };
    struct Found {
        Outcome outcome = Outcome::Missing;
        const SlcSourceText* text = nullptr;  // null unless found
    };

    /// Searches `folders` in order. The provider may be empty.
    SlcIncludedFiles(std::vector<std::string> folders, Provider provider)
        : m_folders(std::move(folders)),
          m_provider(std::move(provider))
    {
    }

    /// Finds and reads the file `name` for an `#include` in a file of the folder `beside`, which is
    /// searched first if the name is in quotes. A name that begins with "/" is the path itself.
    [[nodiscard]] Found Find(const std::string& name, bool isQuoted, std::string_view beside);
    /// Reads the file at `path`, without a search.
    [[nodiscard]] Found Open(const std::string& path);
    /// Adds `contents` as the text of `path`, regardless of the file on disk.
    const SlcSourceText& Add(const std::string& path, std::string contents);

    /// True on the first call for each text.
    [[nodiscard]] bool IsFirstUse(const SlcSourceText& text) { return m_used.insert(&text).second; }
    /// Handles `#pragma once` in that file.
    void IncludeOnce(const SlcSourceText& text) { m_once.insert(IdentityOf(text.Name())); }
    /// True if a `#pragma once` excludes further includes of that file.
    [[nodiscard]] bool IsFinished(const SlcSourceText& text) const
    {
        return !m_once.empty() && m_once.contains(IdentityOf(text.Name()));
    }

    /// Returns the paths of all files that were read, in the order of their first use.
    [[nodiscard]] const std::vector<std::string>& Read() const { return m_read; }
    /// Returns the paths at which a file was looked for and not found. If a file is created at one
    /// of these paths, the next run may include that file instead.
    [[nodiscard]] const std::set<std::string>& Missing() const { return m_missing; }

private:
    [[nodiscard]] static std::string IdentityOf(const std::string& path);

    std::vector<std::string> m_folders;
    Provider m_provider;
    std::map<std::string, std::unique_ptr<SlcSourceText>, std::less<>> m_texts;
    std::vector<std::string> m_read;
    std::set<std::string> m_missing;
    std::set<std::string> m_once;
    std::set<const SlcSourceText*> m_used;
};

/// Returns the folder of a path, with its last "/"; empty for a path without "/".
[[nodiscard]] std::string_view SlcFolderOf(std::string_view path);
