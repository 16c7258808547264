// Those options of the compiler that affect the shader or the reports are passed on unchanged. The
// others are refused, among them `-E` and `-c`, which stop halfway, and `-d`, which writes to
// another folder. Each shader depends on the options, so it is compiled again when they change.
//
// Tested by tests/make/run.sh.

#include "sqxmake/SqxMakeOptions.h"

#include <string_view>

namespace {

constexpr int k_maxJobs = 1024;

// clang-format off
constexpr std::string_view k_description[] = {
    "Compiles shaders: the files that are named, and all '.sl' files in the folders that are named and in their subfolders. A source is compiled only if it, a file that it includes, a shadeop library that it calls, the options or the compiler have changed since the last run, or if there is a new file or library that is found before one of those. Each '.sqx' file is named after its shader and written to the output folder.",
    "Sources are compiled side by side; the messages of each are printed together. A source that is refused leaves no '.sqx' file, not even its earlier one. Its reports are printed again only when they or the source have changed.",
    "Shaders with the same name would overwrite each other. This is reported before anything is built; '--tree' writes them to different folders.",
    "The work is done by ninja, which must be installed. State between runs is kept in the folder '.sqxmake' of the output folder, which may be removed at any time.",
};

//   word                      argument  effect
constexpr SqxOption k_options[] = {
    {"-o",                     "DIR",    "folder for the compiled shaders, created if it is missing; the default is the working directory"},
    {"-j",                     "N",      "compiles N shaders at a time"},
    {"-k",                     "",       "continues after errors"},
    {"--tree",                 "",       "mirrors the folders of the sources in the output folder, so that shaders with the same name do not conflict"},
    {"--dso",                  "",       "builds shared objects in place of byte-code"},
    {"-O0, -O1, -O2, -O3",     "",       "level of optimization"},
    {"-w0, -w1, -w2",          "",       "level of warnings"},
    {"-IDIR",                  "",       "searches DIR for included files and shadeop libraries"},
    {"-DNAME, -DNAME=VALUE",   "",       "defines a preprocessor symbol"},
    {"--strict",               "",       "a function body does not see the variables around it"},
    {"--no-array-check",       "",       "no checks of array indices"},
    {"--dont-use-shadeops",    "",       "does not look for unknown functions in shadeop libraries"},
    {"--step",                 "STAMP",  "for build systems: compiles one source even if it has not changed, and writes STAMP and the dependency file STAMP.d; '--state DIR' before it keeps the state in DIR"},
    {"-h, --help",             "",       "prints this text"},
    {"--version",              "",       "prints the version"},
};

constexpr SqxEntry k_environment[] = {
    {"SLC_CPP_COMMAND", "the preprocess command, as for shaderqx(1); which files were included is then read from the line markers of its result"},
    {"SLC_CC_COMMAND",  "the C++ command of '--dso', as for shaderqx(1)"},
    {"NINJA",           "the ninja to run in place of the one that PATH finds"},
};

constexpr SqxEntry k_files[] = {
    {"DIR/SHADER.sqx", "a compiled shader"},
    {"DIR/.sqxmake",   "the state between runs"},
};

constexpr SqxEntry k_statuses[] = {
    {"0", "all shaders are compiled"},
    {"1", "a shader is refused, or the build could not be done"},
    {"2", "an option or an argument is invalid"},
};

constexpr SqxEntry k_examples[] = {
    {"sqxmake -o compiled shaders", "compiles the library in the folder 'shaders'"},
    {"sqxmake -k -j 8 --dso -Iinclude -o objects shaders", "builds shared objects, eight at a time, and continues after errors"},
};

// Options that are passed to the compiler unchanged, in addition to `-I` and `-D`.
constexpr std::string_view k_compilerWords[] = {
    "-O0", "-O1", "-O2", "-O", "-O3", "-w", "-w0", "-w1", "-w2", "--strict",
    "--dso", "--int", "--use-shadeops", "--dont-use-shadeops", "--no-array-check",
};
// clang-format on

[[nodiscard]] bool IsCompilerOption(std::string_view word)
{
    for (const std::string_view known : k_compilerWords)
        if (word == known)
            return true;
    return (word.starts_with("-I") || word.starts_with("-D")) && word.size() > 2;
}

void ReadOption(SqxOptionWords& words, SqxMakeOptions& options)
{
    if (words.AsksFor(options.information))
        return;
    if (words.Is("-k"))
        options.keepGoing = true;
    else if (words.Is("--tree"))
        options.tree = true;
    else if (IsCompilerOption(words.Word()))
        options.compilerOptions.push_back(words.Word());
    else if (const auto stamp = words.Value("--step", "a file for the stamp")) {
        options.step = true;
        options.stamp = *stamp;
    } else if (const auto state = words.Value("--state", "a folder"))
        options.stateFolder = *state;
    else if (const auto folder = words.Value("--compile", "a folder"))
        options.compileFolder = *folder;
    else if (const auto below = words.Value("--below", "a folder"))
        options.below = *below;
    else if (const auto jobs = words.Value("-j", "a number"))
        options.jobs = SqxReadNumber(*jobs, k_maxJobs, "number of jobs");
    else if (const auto output = words.Value("-o", "a folder"))
        options.outputFolder = *output;
    else
        words.RefuseWord();
}

}  // namespace

const SqxProgram& SqxMakeProgram()
{
    static constexpr SqxProgram k_program = {
        "sqxmake",
        "compiles a library of shaders",
        "[options] FILE|DIR...",
        k_description,
        k_options,
        k_environment,
        k_files,
        k_statuses,
        k_examples,
        "sl",
    };
    return k_program;
}

SqxMakeOptions SqxReadMakeOptions(const std::vector<std::string>& arguments)
{
    SqxMakeOptions options;
    SqxReadWords(
        arguments, [&](SqxOptionWords& words) { ReadOption(words, options); },
        [&](const std::string& word) { options.inputs.push_back(word); });
    if (options.information != SqxInformation::None)
        return options;
    if (options.inputs.empty())
        throw SqxUsageError("No shader and no folder is given");
    if ((options.step || !options.compileFolder.empty()) && options.inputs.size() != 1)
        throw SqxUsageError("A step compiles one source");
    if (options.stateFolder.empty())
        options.stateFolder = options.outputFolder / ".sqxmake";
    return options;
}
