#pragma once

#include <string>
#include <string_view>
#include <vector>

// Text helpers. `in` may be null: then nothing happens.

/// The text with each `pattern` replaced, from left to right without overlap. `in` may be the text
/// of `out` itself.
void StringSubstitution(std::string& out, const char* in, std::string_view pattern,
                        std::string_view replacement);
/// The text with `prefix` replaced where it begins so. `in` is not the text of `out`.
void PrefixSubstitution(std::string& out, const char* in, std::string_view prefix,
                        std::string_view replacement);
/// The path behind a drive letter. There are none here.
[[nodiscard]] inline const char* SkipWindowsDrive(const char* path)
{
    return path;
}

// The header of generated code has a class of this name too, for its own needs; the two may meet
// in one program.
inline namespace QxServices {

/// The directories in which each kind of resource is looked for, in order. Told, unused: it is for
/// programs beside the compiler.
///
/// Each kind has a variable of the environment with its list, as "DIR:DIR"; ";" separates as well.
/// In a list "@" stands for the default list, and "&" for the list as it was before.
class QxSearchPath {
public:
    enum QxCategory {
        e_shaders,
        e_textures,
        e_displays,
        e_archives,
        e_procedurals,
        e_resources,  // what is set here goes to all the others
    };
    static constexpr int k_categories = 6;

    /// What must be possible with a file for `Find` to take it.
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

    // By category: the variable that sets the list, and the list without it.
    static constexpr const char* k_pathVarName[k_categories] = {
        "QX_SHADERS_PATH",  "QX_TEXTURES_PATH",    "QX_DISPLAYS_PATH",
        "QX_ARCHIVES_PATH", "QX_PROCEDURALS_PATH", "QX_RESOURCES_PATH",
    };
    static constexpr const char* k_defaultPaths[k_categories] = {
        ".:$OMBRIUM/shaders", ".:$OMBRIUM/textures", ".:$OMBRIUM/displays", ".", ".", ".",
    };

    /// Takes each list from its variable, or else the default.
    QxSearchPath();

    /// Puts the list in place of the category's, or behind it. Empty items are passed over. Nothing
    /// happens for another category or a null path.
    void SetPath(QxCategory category, const char* path, bool replace);
    void DeleteCategory(QxCategory category);
    /// Each ends in "/". None for another category.
    [[nodiscard]] const std::vector<std::string>& Directories(QxCategory category) const;

    /// The file's path in the first directory that has it; a name that begins with "/" is the path
    /// itself. Valid until the next call. Null if there is none; a directory is no file. Neither
    /// opens nor creates anything.
    [[nodiscard]] const char* Find(QxCategory category, const char* name, QxAccess access);

    // Expansion. `in` may be null, which does nothing.

    /// Of a directory: variables, "~" for the home directory, and a path from the root without "."
    /// and "..", and without "/" at its end. What expands to nothing is the root.
    static void ExpandPath(std::string& out, const char* in);
    /// Of a file: variables, "~", and no doubled "/".
    static void ExpandName(std::string& out, const char* in);
    /// A name reaches from "$" to the next "/"; one that is not set stands for nothing.
    static void SubstituteEnvVar(std::string& out, const char* in);
    /// Takes each ".." away together with the name in front of it. Nothing happens for an empty
    /// text.
    static void ReplaceDotDot(std::string& out, const char* in);

private:
    void AddItem(QxCategory category, const std::string& item,
                 const std::vector<std::string>& before);

    std::vector<std::string> m_directories[k_categories];
    std::string m_found;  // what `Find` gave last
};

}  // namespace QxServices
