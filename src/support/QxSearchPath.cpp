// A search path is a list of directories, which are expanded when the list is set: environment
// variables, `~`, and a leading `.` or `..` are replaced at once. So a later change of the working
// directory affects only directories such as `a/b`. Two items stand for other lists:
//
//     @    the default list          &    the list before the change
//
// Tested by tests/support/QxSearchPathTest.cpp.

#include "support/QxSearchPath.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <utility>

namespace {

// A list set for `e_resources` is appended to the lists of these categories.
constexpr QxSearchPath::QxCategory k_resourceCategories[] = {
    QxSearchPath::e_shaders,  QxSearchPath::e_displays,    QxSearchPath::e_textures,
    QxSearchPath::e_archives, QxSearchPath::e_procedurals,
};

// Modes for `access`, indexed by `QxAccess`.
constexpr int k_accessModes[] = {F_OK, X_OK, W_OK, W_OK | X_OK, R_OK, R_OK | X_OK};

bool IsCategory(int category)
{
    return category >= 0 && category < QxSearchPath::k_categories;
}

/// Replaces the first name of a path if it equals `name`. The first name of ".hidden" is not ".".
void SubstituteFirstName(std::string& path, std::string_view name, std::string_view replacement)
{
    if (path.starts_with(name) && (path.size() == name.size() || path[name.size()] == '/'))
        path.replace(0, name.size(), replacement);
}

void SubstituteHome(std::string& path)
{
    if (const char* home = std::getenv("HOME"))
        SubstituteFirstName(path, "~", home);
}

/// Returns the working directory; an empty text if it cannot be determined.
std::string WorkingDirectory()
{
    const std::unique_ptr<char, decltype(&std::free)> path(::getcwd(nullptr, 0), &std::free);
    return path ? path.get() : "";
}

/// Repeats the substitution until the pattern no longer occurs, since occurrences may overlap.
void SubstituteAll(std::string& text, std::string_view pattern, std::string_view replacement)
{
    while (text.find(pattern) != std::string::npos)
        StringSubstitution(text, text.c_str(), pattern, replacement);
}

/// True also for a symbolic link to a directory.
bool IsDirectory(const std::string& path)
{
    struct stat facts = {};
    return ::stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

void CutEnd(std::string& path)
{
    if (path.size() >= 2 && path.ends_with("/."))
        path.resize(path.size() - 2);
    if (path.ends_with('/'))
        path.pop_back();
}

/// Removes the last name of `path`, which is empty or ends in "/". Returns false, and leaves the
/// path unchanged, if it is empty or its last name is "..". The root is its own parent.
bool CutLastName(std::string& path)
{
    const std::size_t end = path.find_last_not_of('/');
    if (end == std::string::npos)
        return !path.empty();
    const std::size_t slash = path.rfind('/', end);
    const std::size_t begin = slash == std::string::npos ? 0 : slash + 1;
    if (path.compare(begin, end + 1 - begin, "..") == 0)
        return false;
    path.resize(begin);
    return true;
}

}  // namespace

void StringSubstitution(std::string& out, const char* in, std::string_view pattern,
                        std::string_view replacement)
{
    if (!in)
        return;
    std::string result;
    const std::string_view text = in;
    std::size_t begin = 0;
    if (!pattern.empty())
        for (std::size_t at = 0; (at = text.find(pattern, begin)) != std::string_view::npos;
             begin = at + pattern.size())
            result.append(text, begin, at - begin).append(replacement);
    result.append(text, begin);
    out = std::move(result);
}

void PrefixSubstitution(std::string& out, const char* in, std::string_view prefix,
                        std::string_view replacement)
{
    if (!in)
        return;
    const std::string_view text = in;
    out.clear();
    if (text.starts_with(prefix))
        out.append(replacement).append(text, prefix.size());
    else
        out = text;
}

QxSearchPath::QxSearchPath()
{
    for (int category = 0; category < k_categories; ++category) {
        const char* path = std::getenv(k_pathVarName[category]);
        SetPath(static_cast<QxCategory>(category), path ? path : k_defaultPaths[category], true);
    }
}

void QxSearchPath::SetPath(QxCategory category, const char* path, bool replace)
{
    if (!IsCategory(category) || !path)
        return;
    if (category == e_resources) {
        for (const QxCategory other : k_resourceCategories)
            SetPath(other, path, false);
        return;
    }
    const std::vector<std::string> before = m_directories[category];
    if (replace)
        m_directories[category].clear();
    const std::string_view text = path;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t end = text.find_first_of(k_pathSeparatorChrs, begin);
        if (end == std::string_view::npos)
            end = text.size();
        if (end != begin)
            AddItem(category, std::string(text.substr(begin, end - begin)), before);
        begin = end + 1;
    }
}

void QxSearchPath::AddItem(QxCategory category, const std::string& item,
                           const std::vector<std::string>& before)
{
    std::vector<std::string>& directories = m_directories[category];
    std::string directory;
    ExpandPath(directory, item.c_str());
    if (directory == "@") {
        SetPath(category, k_defaultPaths[category], false);
    } else if (directory == "&") {
        directories.insert(directories.end(), before.begin(), before.end());
    } else {
        if (!directory.ends_with(k_directorySeparatorChr))
            directory += k_directorySeparatorChr;
        directories.push_back(std::move(directory));
    }
}

void QxSearchPath::DeleteCategory(QxCategory category)
{
    if (IsCategory(category))
        m_directories[category].clear();
}

const std::vector<std::string>& QxSearchPath::Directories(QxCategory category) const
{
    static const std::vector<std::string> none;
    return IsCategory(category) ? m_directories[category] : none;
}

const char* QxSearchPath::Find(QxCategory category, const char* name, QxAccess access)
{
    m_found.clear();
    const int kind = access;
    if (!name || !*name || kind < 0 || kind >= static_cast<int>(std::size(k_accessModes)))
        return nullptr;
    const auto isFound = [&] {
        return ::access(m_found.c_str(), k_accessModes[kind]) == 0 && !IsDirectory(m_found);
    };
    std::string file;
    ExpandName(file, name);
    if (file.starts_with(k_directorySeparatorChr)) {
        m_found = file;
        return isFound() ? m_found.c_str() : nullptr;
    }
    for (const std::string& directory : Directories(category)) {
        m_found = directory + file;
        if (isFound())
            return m_found.c_str();
    }
    m_found.clear();
    return nullptr;
}

void QxSearchPath::ExpandPath(std::string& out, const char* in)
{
    if (!in)
        return;
    std::string path;
    SubstituteEnvVar(path, in);
    SubstituteHome(path);
    const std::string working = WorkingDirectory();
    if (!working.empty()) {
        SubstituteFirstName(path, "..", working.substr(0, working.rfind('/')));
        SubstituteFirstName(path, ".", working);
    }
    SubstituteAll(path, "/./", "/");
    ReplaceDotDot(path, path.c_str());
    CutEnd(path);
    out = path.empty() ? k_directorySeparatorStr : path;
}

void QxSearchPath::ExpandName(std::string& out, const char* in)
{
    if (!in)
        return;
    std::string name;
    SubstituteEnvVar(name, in);
    SubstituteAll(name, "//", "/");
    SubstituteHome(name);
    SubstituteAll(name, "//", "/");
    CutEnd(name);
    out = std::move(name);
}

void QxSearchPath::SubstituteEnvVar(std::string& out, const char* in)
{
    if (!in)
        return;
    std::string result;
    const std::string_view text = in;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t dollar = text.find(k_envVarBegin, begin);
        result.append(text.substr(begin, dollar - begin));
        if (dollar == std::string_view::npos)
            break;
        const std::size_t end = std::min(text.find(k_directorySeparatorChr, dollar), text.size());
        const std::string name(text.substr(dollar + 1, end - dollar - 1));
        if (const char* value = std::getenv(name.c_str()))
            result += value;
        begin = end;
    }
    out = std::move(result);
}

void QxSearchPath::ReplaceDotDot(std::string& out, const char* in)
{
    if (!in || !*in)
        return;
    std::string result;
    const std::string_view text = in;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('/', begin), text.size());
        const std::string_view name = text.substr(begin, end - begin);
        const bool isLast = end == text.size();
        if (name != ".." || !CutLastName(result)) {
            result += name;
            if (!isLast)
                result += '/';
        } else if (isLast && result.ends_with('/')) {
            result.pop_back();
        }
        begin = end + 1;
    }
    out = result.empty() && !text.starts_with('/') ? "." : std::move(result);
}
