#pragma once

#include <string>
#include <string_view>
#include <vector>

// Text helpers. They do nothing if `in` is null.

/// Replaces each `pattern`, from left to right without overlap. `in` may be the text of `out`
/// itself.
void StringSubstitution(std::string& out, const char* in, std::string_view pattern,
                        std::string_view replacement);
/// Replaces `prefix` at the start of the text. `in` must not be the text of `out`.
void PrefixSubstitution(std::string& out, const char* in, std::string_view prefix,
                        std::string_view replacement);
/// Returns the path after a drive letter. This platform has none.
[[nodiscard]] inline const char* SkipWindowsDrive(const char* path)
{
    return path;
}

// The header of generated code has another class of this name; both may be linked into one program.
inline namespace QxServices {

/// Lists, for each kind of resource, the directories in which it is searched, in order. Part of the
/// library for other programs; the compiler does not use it.
///
/// Each kind has an environment variable with its list, such as "DIR:DIR"; ";" is a separator too.
/// In a list "@" stands for the default list, and "&" for the list before the change.
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

    // Indexed by category: the environment variable that sets the list, and the default list.
    static constexpr const char* k_pathVarName[k_categories] = {
        "QX_SHADERS_PATH",  "QX_TEXTURES_PATH",    "QX_DISPLAYS_PATH",
        "QX_ARCHIVES_PATH", "QX_PROCEDURALS_PATH", "QX_RESOURCES_PATH",
    };
    static constexpr const char* k_defaultPaths[k_categories] = {
        ".:$OMBRIUM/shaders", ".:$OMBRIUM/textures", ".:$OMBRIUM/displays", ".", ".", ".",
    };

    /// Initializes each list from its environment variable, or with the default if that is not set.
    QxSearchPath();

    /// Sets the category's list if `replace` is true, or else appends to it. Setting `e_resources`
    /// always appends. Empty items are skipped. Does nothing for an invalid category or a null
    /// path.
    void SetPath(QxCategory category, const char* path, bool replace);
    void DeleteCategory(QxCategory category);
    /// Returns no directories for an invalid category. Each directory ends in "/".
    [[nodiscard]] const std::vector<std::string>& Directories(QxCategory category) const;

    /// Returns the file's path in the first directory that has it; a name that begins with "/" is
    /// the path itself. The result is valid until the next call. Null if there is no such file;
    /// directories do not count. Does not open or create anything.
    [[nodiscard]] const char* Find(QxCategory category, const char* name, QxAccess access);

    // Expansion of paths. These functions do nothing if `in` is null.

    /// Expands a directory to an absolute path: replaces variables and "~" (the home directory),
    /// and removes ".", ".." and a final "/". A path that expands to nothing becomes the root.
    static void ExpandPath(std::string& out, const char* in);
    /// Expands a file name: variables and "~"; removes doubled "/".
    static void ExpandName(std::string& out, const char* in);
    /// Expands environment variables. A name extends from "$" to the next "/"; an unset variable
    /// expands to nothing.
    static void SubstituteEnvVar(std::string& out, const char* in);
    /// Removes each ".." together with the name before it. Does nothing for an empty text.
    static void ReplaceDotDot(std::string& out, const char* in);

private:
    void AddItem(QxCategory category, const std::string& item,
                 const std::vector<std::string>& before);

    std::vector<std::string> m_directories[k_categories];
    std::string m_found;  // the last result of `Find`
};

}  // namespace QxServices
