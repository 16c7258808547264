// Options that do not matter for checking a source, such as the level of optimization, are ignored,
// so that the options of a build can be used unchanged.
//
// Tested by tests/sqxls/SqxLsDiagnosticsTest.cpp.

#include "sqxls/SqxLsSettings.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>

#include "sqxmake/SqxMakeState.h"

namespace {

namespace fs = std::filesystem;

std::vector<std::string> TextsOf(const SqxJson& json)
{
    std::vector<std::string> texts;
    if (json.is_array())
        for (const SqxJson& text : json)
            if (text.is_string())
                texts.push_back(text);
    return texts;
}

/// Returns the option. Makes the folder of -I, which is relative to `folder`, absolute, so that the
/// option is valid in any working directory.
std::string WithWholePath(const std::string& option, const fs::path& folder)
{
    if (!option.starts_with("-I") || option.size() == 2)
        return option;
    const std::string name =
        option.substr(std::min(option.find_first_not_of(" \t", 2), option.size()));
    return "-I" + (folder / name).lexically_normal().string();
}

/// Returns the lines of a text file that are not blank, without blanks at both ends; nothing if the
/// file cannot be read.
std::vector<std::string> LinesOf(const fs::path& path)
{
    std::vector<std::string> lines;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        const std::size_t begin = line.find_first_not_of(" \t\r");
        if (begin != std::string::npos)
            lines.push_back(line.substr(begin, line.find_last_not_of(" \t\r") + 1 - begin));
    }
    return lines;
}

/// Returns the nearest folder, from that of the source upwards but without the root, for which
/// `isWanted` is true; empty if there is none.
fs::path NearestFolder(const fs::path& source, const std::function<bool(const fs::path&)>& isWanted)
{
    for (fs::path folder = source.parent_path(); folder.has_relative_path();
         folder = folder.parent_path())
        if (isWanted(folder))
            return folder;
    return {};
}

bool Exists(const fs::path& path)
{
    std::error_code ignored;
    return fs::exists(path, ignored);
}

/// Appends options; the folders that they name are relative to `folder`. Joins -I or -D with its
/// value if that is a separate word.
void AddOptions(const std::vector<std::string>& words, const fs::path& folder,
                std::vector<std::string>& options)
{
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool isSplit = (words[i] == "-I" || words[i] == "-D") && i + 1 < words.size();
        const std::string option = isSplit ? words[i] + words[i + 1] : words[i];
        options.push_back(WithWholePath(option, folder));
        i += isSplit ? 1 : 0;
    }
}

void AddMakeOptions(const std::string& path, const SqxLsSettings& settings,
                    std::vector<std::string>& options)
{
    const std::string id = SqxMakeState::IdOf(path);
    const auto builds = [&](const fs::path& folder) {
        const SqxMakeState state(folder);
        return Exists(state.StampOf(id)) || Exists(state.FailureOf(id));
    };
    fs::path folder = settings.stateFolder;
    if (folder.empty()) {
        static constexpr const char* k_name = ".sqxmake";
        folder = NearestFolder(path, [&](const fs::path& at) { return builds(at / k_name); });
        if (!folder.empty())
            folder /= k_name;
    }
    if (folder.empty() || !builds(folder))
        return;
    const SqxMakeState::Options known = SqxMakeState(folder).ReadOptions();
    AddOptions(known.words, known.folder, options);
}

void AddFlagsFile(const std::string& path, std::vector<std::string>& options)
{
    static constexpr const char* k_name = "compile_flags.txt";
    const fs::path folder =
        NearestFolder(path, [](const fs::path& at) { return Exists(at / k_name); });
    if (!folder.empty())
        AddOptions(LinesOf(folder / k_name), folder, options);
}

void Apply(const std::string& option, QxCompileOptions& options)
{
    if (option.starts_with("-I"))
        options.folders.push_back(option.substr(2));
    else if (option.starts_with("-D"))
        options.macros.push_back(option.substr(2));
    else if (option == "-w")
        options.warningLevel = 0;
    else if (option.size() == 3 && option.starts_with("-w") && option[2] >= '0' && option[2] <= '2')
        options.warningLevel = option[2] - '0';
    else if (option == "--strict")
        options.isStrict = true;
    else if (option == "--use-shadeops" || option == "--dont-use-shadeops")
        options.usesShadeops = option == "--use-shadeops";
}

}  // namespace

SqxLsSettings SqxLsReadSettings(const SqxJson& json, const std::string& folder)
{
    SqxLsSettings settings;
    std::vector<std::string> words = TextsOf(SqxLsMember(json, "options"));
    for (const std::string& include : TextsOf(SqxLsMember(json, "includeFolders")))
        words.push_back("-I" + include);
    for (const std::string& macro : TextsOf(SqxLsMember(json, "macros")))
        words.push_back("-D" + macro);
    if (const SqxJson& level = SqxLsMember(json, "warningLevel"); level.is_number_unsigned())
        words.push_back("-w" + level.dump());
    AddOptions(words, folder, settings.options);
    if (const SqxJson& state = SqxLsMember(json, "sqxmakeState");
        state.is_string() && state.get_ref<const std::string&>() != "")
        settings.stateFolder = (fs::path(folder) / state.get<std::string>()).string();
    if (const SqxJson& preview = SqxLsMember(json, "sqxview");
        preview.is_string() && preview.get_ref<const std::string&>() != "")
        settings.preview = preview.get<std::string>();
    const SqxJson& details = SqxLsMember(json, "inlayHints/details");
    const SqxJson& arguments = SqxLsMember(json, "inlayHints/arguments");
    settings.showsDetails = !details.is_boolean() || details.get<bool>();
    settings.showsArguments = !arguments.is_boolean() || arguments.get<bool>();
    return settings;
}

QxCompileOptions SqxLsOptionsFor(const std::string& path, const SqxLsSettings& settings)
{
    std::vector<std::string> words;
    AddMakeOptions(path, settings, words);
    AddFlagsFile(path, words);
    words.insert(words.end(), settings.options.begin(), settings.options.end());
    QxCompileOptions options;
    options.optimizationLevel = 0;
    options.showsAdvice = true;
    for (const std::string& word : words)
        Apply(word, options);
    return options;
}
