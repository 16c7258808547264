// The options are one table; its rows are tried from the top, and the first that matches takes
// the argument. What no row takes is a fault or the input file.
//
//     -O3          {"-O3", SetLevel, 3, Word}          the argument is the row's text
//     -Iinclude    {"-I", AddDirectory, 0, Prefix}     or begins with it
//
// A level sets each of its flags, so that a later one takes back what an earlier one has turned on.
//
// Tested by tests/driver/SlcCommandLineTest.cpp; tests/manual holds the manual page
// against `--help`.

#include "driver/SlcCommandLine.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string_view>

#include "driver/SlcDefaultCommands.h"
#include "driver/SlcProgramName.h"
#include "support/QxVersion.h"
#include "support/SlcDiagnostics.h"

namespace {

constexpr std::string_view k_sourceExtension = ".sl";

using Flag = bool SlcOptionsControl::*;

// What each level turns on beyond the one below it.
constexpr Flag k_level1Flags[] = {
    &SlcOptionsControl::m_simdInstructions, &SlcOptionsControl::m_regroupParallelBlocks,
    &SlcOptionsControl::m_assignInPlace,    &SlcOptionsControl::m_reuseTempVars,
    &SlcOptionsControl::m_reuseBoolFlags,
};
constexpr Flag k_level2Flags[] = {
    &SlcOptionsControl::m_deadCodeElimination,   &SlcOptionsControl::m_optimizeBasicBlocks,
    &SlcOptionsControl::m_convertConstOps,       &SlcOptionsControl::m_copyPropagation,
    &SlcOptionsControl::m_blockOptimizerEnabled, &SlcOptionsControl::m_convertTmpVarDetail,
    &SlcOptionsControl::m_reduceNumberTmps,
};
constexpr Flag k_level3Flags[] = {
    &SlcOptionsControl::m_codeMotion,
    &SlcOptionsControl::m_aggressiveSIMD,
};

void SetFlags(std::span<const Flag> flags, bool value, SlcOptionsControl& options)
{
    for (const Flag flag : flags)
        options.*flag = value;
}

/// The arguments that are left, with the one at hand in front.
class ArgumentList {
public:
    explicit ArgumentList(std::span<const char* const> arguments) : m_rest(arguments) {}
    [[nodiscard]] bool Empty() const { return m_rest.empty(); }
    [[nodiscard]] std::string_view Front() const { return m_rest.front(); }
    void Pop() { m_rest = m_rest.subspan(1); }

private:
    std::span<const char* const> m_rest;
};

[[nodiscard]] bool Fail(std::string_view message)
{
    SeverError(k_programName, message);
    return false;
}

// The effects of options. The option's argument is in front of `arguments`; an effect that takes
// a further one pops the first. False after a reported fault.

template <auto field>
bool SetOption(SlcCommandLine& line, ArgumentList&, int value)
{
    line.m_options.*field = value != 0;
    return true;
}

template <auto field>
bool SetStage(SlcCommandLine& line, ArgumentList&, int value)
{
    line.*field = value != 0;
    return true;
}

bool SetLevel(SlcCommandLine& line, ArgumentList&, int level)
{
    SetOptimizationLevel(level, line.m_options);
    return true;
}

bool SetWarnings(SlcCommandLine&, ArgumentList&, int level)
{
    SetWarningLevel(level);
    return true;
}

bool SetOutputDirectory(SlcCommandLine& line, ArgumentList& arguments, int)
{
    arguments.Pop();
    // An empty name, as an unset variable of the shell gives, would mean the root directory.
    if (arguments.Empty() || arguments.Front().empty() || arguments.Front().starts_with('-'))
        return Fail("No directory name provided with the option '-d'");
    line.m_outputDirectory = arguments.Front();
    return true;
}

bool AddDefinition(SlcCommandLine& line, ArgumentList& arguments, int)
{
    line.m_preprocessorArguments.emplace_back(arguments.Front());
    return true;
}

bool AddDirectory(SlcCommandLine& line, ArgumentList& arguments, int)
{
    line.m_options.m_searchDirs.emplace_back(arguments.Front().substr(2));
    return AddDefinition(line, arguments, 0);
}

bool PreprocessOnly(SlcCommandLine& line, ArgumentList&, int)
{
    line.m_keepPreprocessedFile = true;
    line.m_runCCBuild = false;
    line.m_runCompile = false;
    return true;
}

bool LeaveOutBuild(SlcCommandLine& line, ArgumentList&, int)
{
    line.m_keepCCFile = true;
    line.m_runCCBuild = false;
    line.m_runCompile = true;
    return true;
}

enum class Match { Word, Prefix };
using enum Match;

struct Option {
    std::string_view text;
    bool (*effect)(SlcCommandLine&, ArgumentList&, int);
    int value;  // for the effect
    Match match;
};

using Options = SlcOptionsControl;
using Line = SlcCommandLine;

// clang-format off
//   text                     effect                                     value  match
constexpr Option k_options[] = {
    {"-O0",                   SetLevel,                                  0,     Word},
    {"-O1",                   SetLevel,                                  1,     Word},
    {"-O2",                   SetLevel,                                  2,     Word},
    {"-O",                    SetLevel,                                  2,     Word},
    {"-O3",                   SetLevel,                                  3,     Word},
    {"-d",                    SetOutputDirectory,                        0,     Word},
    {"-w",                    SetWarnings,                               0,     Word},
    {"-w0",                   SetWarnings,                               0,     Word},
    {"-w1",                   SetWarnings,                               1,     Word},
    {"-w2",                   SetWarnings,                               2,     Word},
    {"-I",                    AddDirectory,                              0,     Prefix},
    {"-E",                    PreprocessOnly,                            0,     Word},
    {"-c",                    LeaveOutBuild,                             0,     Word},
    {"-D",                    AddDefinition,                             0,     Prefix},
    {"--strict",              SetOption<&Options::m_strict>,             1,     Word},
    {"--dso",                 SetOption<&Options::m_generateDSO>,        1,     Word},
    {"--int",                 SetOption<&Options::m_generateDSO>,        0,     Word},
    {"--keep-cpp-file",       SetStage<&Line::m_keepPreprocessedFile>,   1,     Word},
    {"--keep-c++-file",       SetStage<&Line::m_keepCCFile>,             1,     Word},
    {"--dont-keep-cpp-file",  SetStage<&Line::m_keepPreprocessedFile>,   0,     Word},
    {"--dont-keep-c++-file",  SetStage<&Line::m_keepCCFile>,             0,     Word},
    {"--use-shadeops",        SetOption<&Options::m_useShadeops>,        1,     Word},
    {"--dont-use-shadeops",   SetOption<&Options::m_useShadeops>,        0,     Word},
    {"--no-array-check",      SetOption<&Options::m_checkArrayBounds>,   0,     Word},
};

constexpr std::string_view k_usage[] = {
    "  '-d'                    :  Output directory to generate .sqx file.",
    "  '--dso'                 :  Generate .sqx file as a DSO.",
    "  '--strict               :  Strict SL syntax.",
    "  '--int'                 :  Generate .sqx file as byte-code (default).",
    "  '-O0'                   :  No optimizations",
    "  '-O1'                   :  Small optimizations",
    "  '-O2 or '-O'            :  Agressive optimizations (default)",
    "  '-O3'                   :  Very agressive optimisations",
    "  '-w or -w0              :  No warnings",
    "  '-w1                    :  Log important warnings only (default)",
    "  '-w2                    :  Log all warnings",
    "  '-I<dir>                :  Add directory for searching include files.",
    "  '-D<name>               :  Define a preprocessor symbol.",
    "  '-E                     :  Run only the preprocessor.",
    "  '-c                     :  Generate '.cpp' file, but don't compile it.",
    "  '--no-array-check       :  Don't generate code that checks array bounds at run-time.",
    "  '--[dont-]keep-cpp-file :  [Don't] keep file generated by the C++ preprossesor.",
    "                             (NOT kept by default)",
    "  '--[dont-]keep-c++-file :  [Don't] keep C++ file generated by the shader compiler.",
    "                             (kept by default)",
    "  '--[dont-]use-shadeops  :  Enable [disable] use of shadeops (enable by default).",
    "  '-v' or '--version'     :  Print compiler's version number.",
    "  '-h' or '--help'        :  This description of the command.",
};
// clang-format on

constexpr bool Takes(const Option& option, std::string_view argument)
{
    return option.match == Word ? argument == option.text : argument.starts_with(option.text);
}

// A row that a row above it takes would never have an effect.
constexpr bool EachRowIsReached()
{
    for (const Option& row : k_options)
        for (const Option* above = k_options; above != &row; ++above)
            if (Takes(*above, row.text))
                return false;
    return true;
}
static_assert(EachRowIsReached());

void PrintVersion()
{
    const std::unique_ptr<char, decltype(&std::free)> version(QxGetVersionString(), &std::free);
    std::printf("shaderqx version %s.\n", version.get());
    std::printf("%s\n", QxGetCopyrightString());
}

/// A directory can be opened for reading too, but is no source.
[[nodiscard]] bool IsReadableFile(const std::string& path)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        return false;
    std::FILE* file = std::fopen(path.c_str(), "r");
    if (!file)
        return false;
    static_cast<void>(std::fclose(file));
    return true;
}

[[nodiscard]] bool SetInputFile(SlcCommandLine& line, std::string_view path)
{
    if (!line.m_inputFile.empty())
        return Fail("Cannot provide multiple input files.");
    line.m_inputFile = path;
    if (!path.ends_with(k_sourceExtension))
        return Fail("Input file provided doesn't ends with the '.sl' extension: " +
                    line.m_inputFile);
    if (!IsReadableFile(line.m_inputFile))
        return Fail("File '" + line.m_inputFile + "' doesn't seem to exist.");
    return true;
}

[[nodiscard]] bool ParseArgument(SlcCommandLine& line, ArgumentList& arguments)
{
    const std::string_view argument = arguments.Front();
    for (const Option& option : k_options)
        if (Takes(option, argument))
            return option.effect(line, arguments, option.value);
    if (argument.starts_with('-'))
        return Fail("Invalid option: " + std::string(argument));
    return SetInputFile(line, argument);
}

/// Prints what the argument asks for. False if it asks for nothing of the kind.
[[nodiscard]] bool PrintInformation(std::string_view argument)
{
    if (argument == "-h" || argument == "--help")
        PrintUsage();
    else if (argument == "-v" || argument == "--version")
        PrintVersion();
    else
        return false;
    return true;
}

void ReadEnvironment(SlcCommandLine& line)
{
    const char* preprocessCommand = std::getenv("SLC_CPP_COMMAND");
    const char* ccCommand = std::getenv("SLC_CC_COMMAND");
    line.m_preprocessCommand = preprocessCommand ? preprocessCommand : DefaultPreprocessCommand();
    line.m_ccCommand = ccCommand ? ccCommand : DefaultCCCommand();
    const char* advice = std::getenv("SLC_ADVICE");
    ShowAdvice(advice && std::string_view(advice) == "1");
    if (const char* librariesFile = std::getenv("SLC_SHADEOP_LIBRARIES"))
        line.m_librariesFile = librariesFile;
    if (!preprocessCommand)
        SevereWarning(k_programName, "'SLC_CPP_COMMAND' environment variable dosen't seems to "
                                     "exist. Will use '" +
                                         line.m_preprocessCommand +
                                         "' has command for preprocessing.");
    if (!ccCommand)
        SevereWarning(k_programName, "'SLC_CC_COMMAND' environment variable dosen't seems to "
                                     "exist. Will use '" +
                                         line.m_ccCommand + "' has command for C++ compiling .");
}

}  // namespace

std::string SlcCommandLine::PreprocessorOptions() const
{
    std::string options;
    for (const std::string& argument : m_preprocessorArguments)
        options += argument + ' ';
    return options;
}

bool ParseOptions(std::span<const char* const> arguments, SlcCommandLine& line)
{
    line = SlcCommandLine();
    SetOptimizationLevel(2, line.m_options);
    if (arguments.size() == 1 && PrintInformation(arguments.front()))
        return false;

    for (ArgumentList rest(arguments); !rest.Empty(); rest.Pop())
        if (!ParseArgument(line, rest))
            return false;
    if (!line.m_options.m_generateDSO)
        // Byte-code has no registers to keep a temporary in.
        line.m_options.m_convertTmpVarDetail = false;
    if (line.m_inputFile.empty())
        return Fail("No input file has been provided.");

    const std::size_t stemLength = line.m_inputFile.size() - k_sourceExtension.size();
    line.m_preprocessedFile = line.m_inputFile.substr(0, stemLength) + ".i";
    ReadEnvironment(line);
    return true;
}

void SetOptimizationLevel(int level, SlcOptionsControl& options)
{
    if (level < 0 || level > 3)
        return;
    options.m_checkArrayBounds = level < 3;
    SetFlags(k_level1Flags, level >= 1, options);
    SetFlags(k_level2Flags, level >= 2, options);
    SetFlags(k_level3Flags, level >= 3, options);
}

void PrintUsage()
{
    std::printf("Usage: %.*s [options] source_file\n\nOptions: \n",
                static_cast<int>(k_programName.size()), k_programName.data());
    for (const std::string_view row : k_usage)
        std::printf("%.*s\n", static_cast<int>(row.size()), row.data());
    std::printf("\n");
}
