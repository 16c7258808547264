// Line markers contain the path of the file that was found, not the paths that were searched before
// it. But if a folder of `-I` contains the file, the path starts with this folder, and the rest is
// the name in the source: with -Ia -Ib, in c/d.sl, the file of the marker
//
//     # 1 "b/noise.h" 1
//
// was searched as c/noise.h, which only `#include <noise.h>` skips, and as a/noise.h.
//
// Only libraries that did not exist count as new. One that existed but did not declare the called
// function is not checked again.
//
// Tested by tests/make/run.sh.

#include "compile/SqxSearchedPlaces.h"

#include <algorithm>
#include <string_view>

#include "compile/SqxLineMarker.h"
#include "support/QxSystem.h"
#include "symbols/SlcShadeopLoader.h"

namespace {

namespace fs = std::filesystem;

// The start of each kind of entry in the text. A null character ends each entry, since paths may
// have line breaks.
constexpr std::string_view k_missing = "missing ";
constexpr std::string_view k_folder = "folder ";
constexpr std::string_view k_library = "library ";

/// Returns the name of a file relative to a folder, given the path that the preprocessor joins from
/// both; empty if the path does not start with the folder.
[[nodiscard]] std::string NameBelow(const fs::path& folder, const std::string& file)
{
    std::string start = folder.string();
    if (!start.ends_with('/'))
        start += '/';
    return file.starts_with(start) ? file.substr(start.size()) : "";
}

/// True if the preprocessor would read the file. It passes over folders and devices.
[[nodiscard]] bool IsThere(const fs::path& header)
{
    std::error_code ignored;
    const fs::file_status status = fs::status(header, ignored);
    return fs::is_regular_file(status) || fs::is_fifo(status);
}

[[nodiscard]] std::vector<std::string> LibrariesIn(const std::string& folder)
{
    std::vector<std::string> paths;
    QxSystem::ScanDir(folder.c_str(), CheckDSO, &paths, false);
    return paths;
}

}  // namespace

void SqxSearchedPlaces::AddMissing(const fs::path& header)
{
    m_missing.insert(fs::absolute(header).string());
}

void SqxSearchedPlaces::AddHeaders(std::istream& preprocessed, const Folders& folders)
{
    const auto addUnlessThere = [&](const fs::path& header) {
        if (!IsThere(header))  // a preprocessor may search in another order
            AddMissing(header);
    };
    std::vector<fs::path> including;
    for (std::string line; std::getline(preprocessed, line);) {
        const auto marker = SqxReadLineMarker(line);
        if (!marker)
            continue;
        if (marker->returns && including.size() > 1)
            including.pop_back();
        if (marker->enters && !including.empty())
            for (auto folder = folders.begin(); folder != folders.end(); ++folder) {
                const std::string name = NameBelow(*folder, marker->file);
                if (name.empty())
                    continue;
                addUnlessThere(including.back().parent_path() / name);
                for (auto front = folders.begin(); front != folder; ++front)
                    addUnlessThere(*front / name);
            }
        if (marker->enters || including.empty())
            including.emplace_back(marker->file);
    }
}

void SqxSearchedPlaces::AddLibraries(const std::set<std::string>& taken, const Folders& folders)
{
    const auto hasTaken = [&](const fs::path& folder) {
        return std::any_of(taken.begin(), taken.end(), [&](const std::string& library) {
            return fs::path(library).parent_path() ==
                   (folder / "").lexically_normal().parent_path();
        });
    };
    const auto last = std::find_if(folders.rbegin(), folders.rend(), hasTaken).base();
    for (auto folder = folders.begin(); folder != last; ++folder) {
        m_folders.insert(folder->string());
        for (std::string& library : LibrariesIn(folder->string()))
            m_libraries.insert(std::move(library));
    }
}

bool SqxSearchedPlaces::HasNewFiles() const
{
    if (std::any_of(m_missing.begin(), m_missing.end(), IsThere))
        return true;
    return std::any_of(m_folders.begin(), m_folders.end(), [&](const std::string& folder) {
        const auto libraries = LibrariesIn(folder);
        return !std::all_of(libraries.begin(), libraries.end(), [&](const std::string& library) {
            return m_libraries.contains(library);
        });
    });
}

std::string SqxSearchedPlaces::Text() const
{
    std::string text;
    const auto add = [&](std::string_view word, const std::set<std::string>& paths) {
        for (const std::string& path : paths)
            text += std::string(word) + path + '\0';
    };
    add(k_missing, m_missing);
    add(k_folder, m_folders);
    add(k_library, m_libraries);
    return text;
}

SqxSearchedPlaces SqxSearchedPlaces::Read(std::istream& text)
{
    SqxSearchedPlaces places;
    for (std::string entry; std::getline(text, entry, '\0');) {
        const auto take = [&](std::string_view word, std::set<std::string>& paths) {
            if (entry.starts_with(word))
                paths.insert(entry.substr(word.size()));
        };
        take(k_missing, places.m_missing);
        take(k_folder, places.m_folders);
        take(k_library, places.m_libraries);
    }
    return places;
}
