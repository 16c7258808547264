#pragma once

#include <string>
#include <string_view>
#include <vector>

// Text helpers. They do nothing if `in` is null.

/// Sets `out` to `in` with each `pattern` replaced, from left to right without overlap; an empty
/// pattern matches nothing. `in` may be the text of `out` itself.
void StringSubstitution(std::string& out, const char* in, std::string_view pattern,
                        std::string_view replacement);
/// Sets `out` to `in`, where `prefix` is replaced if the text starts with it. `in` must not be the
/// text of `out`.
void PrefixSubstitution(std::string& out, const char* in, std::string_view prefix,
                        std::string_view replacement);
/// Returns the path without a drive letter; paths of this platform have none.
[[nodiscard]] inline const char* SkipWindowsDrive(const char* path)
{
    return path;
}

// The header of generated code has another class of this name; both may be linked into one program.
inline namespace QxServices {

/// For each category of files, a list of the directories in which they are searched, in order. Part
/// of the library for other programs; the compiler does not use it.
///
/// A list is written as "DIR:DIR"; ";" is also a separator. In it "@" stands for the category's
/// default list, and "&" for its list before the change. An environment variable for each category
/// can replace the default list.
class QxSearchPath {
public:
    enum QxCategory {
        e_shaders,
        e_textures,
        e_displays,
        e_archives,
        e_procedurals,
        e_resources,  // has no list: setting it appends to all others
    };
    static constexpr int k_categories = 6;

    /// The access that a file must allow for `Find` to return it.
    enum QxAccess {
        e_exists,
        e_executable,
        e_writable,
        e_writableExecutable,
        e_readable,
        e_readableExecutable,
    };

    static constexpr char k_directorySeparatorChr = '/';
    static constexpr std::string_view k_directorySeparatorStr = "/";
    static constexpr std::string_view k_envVarBegin = "$";
    static constexpr std::string_view k_pathSeparatorChrs = ":;";

    // Indexed by category: the environment variable that contains the initial list, and the list
    // if it is not set.
    static constexpr const char* k_pathVarName[k_categories] = {
        "QX_SHADERS_PATH",  "QX_TEXTURES_PATH",    "QX_DISPLAYS_PATH",
        "QX_ARCHIVES_PATH", "QX_PROCEDURALS_PATH", "QX_RESOURCES_PATH",
    };
    static constexpr const char* k_defaultPaths[k_categories] = {
        ".:$OMBRIUM/shaders", ".:$OMBRIUM/textures", ".:$OMBRIUM/displays", ".", ".", ".",
    };

    /// Initializes each list from its environment variable, or with the default if that is not set.
    /// The list for `e_resources`, "." by default, is then appended to all others.
    QxSearchPath();

    /// Replaces the category's list by the list `path` if `replace` is true, otherwise appends
    /// `path` to it. For `e_resources`, always appends to all other lists. Expands each directory
    /// with `ExpandPath`, and skips empty items. Does nothing for an invalid category or a null
    /// path.
    void SetPath(QxCategory category, const char* path, bool replace);
    /// Empties the category's list.
    void DeleteCategory(QxCategory category);
    /// Returns the category's list; empty for an invalid category. Each directory ends in "/".
    [[nodiscard]] const std::vector<std::string>& Directories(QxCategory category) const;

    /// Expands `name` with `ExpandName`, and returns the path of the first file of this name, in
    /// the order of the category's directories, that allows `access`. A name that then begins with
    /// "/" is the path itself. Null if there is no such file, if `name` is null or empty, or if
    /// `access` is invalid. Directories do not count as files. The result is valid until the next
    /// call. Does not open or create anything.
    [[nodiscard]] const char* Find(QxCategory category, const char* name, QxAccess access);

    // Expansion of paths. These functions do nothing if `in` is null.

    /// Expands the path of a directory: replaces variables and a leading "~" (the home directory),
    /// "." (the working directory) or ".." (its parent), and removes each other ".", each other
    /// ".." with the name before it, and a final "/". A path that expands to nothing becomes the
    /// root; "a/b" stays relative.
    static void ExpandPath(std::string& out, const char* in);
    /// Expands a file name: replaces variables and a leading "~", and removes doubled "/" and a
    /// final "/" or "/.".
    static void ExpandName(std::string& out, const char* in);
    /// Expands environment variables. The name of a variable extends from "$" to the next "/"; an
    /// unset variable expands to nothing.
    static void SubstituteEnvVar(std::string& out, const char* in);
    /// Removes each ".." together with the name before it; a ".." that has none stays, except
    /// directly below the root. A relative path of which nothing remains becomes ".". Does nothing
    /// for an empty text.
    static void ReplaceDotDot(std::string& out, const char* in);

private:
    void AddItem(QxCategory category, const std::string& item,
                 const std::vector<std::string>& before);

    std::vector<std::string> m_directories[k_categories];
    std::string m_found;  // the last result of `Find`
};

}  // namespace QxServices
