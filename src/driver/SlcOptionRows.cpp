// A single table defines the options. Parsing of the command line and all texts about options are
// derived from it:
//
//     -O2            {"-O2, -O", ..., SetLevel, 2}        the argument is a spelling of the row
//     -Iinclude      {"-IDIR", ..., AddDirectory, 0}      or begins with it, where a value follows
//     --dont-keep..  {"--keep.., --dont-keep..", ..., 1}  "--dont" has the opposite value
//
// A level resets the array check, so a later level overrides an earlier option.
//
// Tested by tests/driver/SlcCommandLineTest.cpp, tests/manual and tests/reference.

#include "driver/SlcOptionRows.h"

#include <iterator>

#include "driver/SlcProgramName.h"
#include "support/SlcDiagnostics.h"

namespace {

// The effects of options, as `SlcOptionRow::Effect` describes them.

template <auto field>
bool SetOption(SlcCommandLine& line, SlcArgumentList&, int value)
{
    line.m_compile.*field = value != 0;
    return true;
}

template <auto field>
bool SetStage(SlcCommandLine& line, SlcArgumentList&, int value)
{
    line.*field = value != 0;
    return true;
}

bool SetOutput(SlcCommandLine& line, SlcArgumentList&, int isCpp)
{
    line.m_compile.output =
        isCpp != 0 ? QxCompileOptions::Output::Cpp : QxCompileOptions::Output::ByteCode;
    return true;
}

bool SetLevel(SlcCommandLine& line, SlcArgumentList&, int level)
{
    line.m_compile.optimizationLevel = level;
    line.m_compile.checksArrayBounds = true;
    return true;
}

bool SetWarnings(SlcCommandLine& line, SlcArgumentList&, int level)
{
    line.m_compile.warningLevel = level;
    return true;
}

bool SetOutputDirectory(SlcCommandLine& line, SlcArgumentList& arguments, int)
{
    arguments.Pop();
    // An empty name, from an unset variable of the shell, would mean the root directory.
    if (arguments.Empty() || arguments.Front().empty() || arguments.Front().starts_with('-')) {
        SeverError(k_programName, "No directory name provided with the option '-d'");
        return false;
    }
    line.m_outputDirectory = arguments.Front();
    return true;
}

template <auto list>
bool AddValue(SlcCommandLine& line, SlcArgumentList& arguments, int)
{
    (line.m_compile.*list).emplace_back(arguments.Front().substr(2));
    line.m_preprocessorArguments.emplace_back(arguments.Front());
    return true;
}

bool PreprocessOnly(SlcCommandLine& line, SlcArgumentList&, int)
{
    line.m_keepPreprocessedFile = true;
    line.m_runCCBuild = false;
    line.m_runCompile = false;
    return true;
}

bool LeaveOutBuild(SlcCommandLine& line, SlcArgumentList&, int)
{
    line.m_keepCCFile = true;
    line.m_runCCBuild = false;
    line.m_runCompile = true;
    return true;
}

using Options = QxCompileOptions;
using Line = SlcCommandLine;

// clang-format off
constexpr SlcOptionRow k_rows[] = {
    {"-d", "DIR", "writes the compiled shader into DIR in place of the working directory",
     "  '-d'                    :  Output directory to generate .sqx file.",
     SetOutputDirectory, 0},
    {"--dso", "", "writes SHADER.cpp into the working directory and builds a shared object from it",
     "  '--dso'                 :  Generate .sqx file as a DSO.",
     SetOutput, 1},
    {"--strict", "", "a function body does not see the variables around it",
     "  '--strict               :  Strict SL syntax.",
     SetOption<&Options::isStrict>, 1},
    {"--int", "", "writes byte-code; the default",
     "  '--int'                 :  Generate .sqx file as byte-code (default).",
     SetOutput, 0},
    {"-O0", "", "no optimization",
     "  '-O0'                   :  No optimizations",
     SetLevel, 0},
    {"-O1", "", "recycled temporaries, whole-grid instructions, merged parallel blocks",
     "  '-O1'                   :  Small optimizations",
     SetLevel, 1},
    {"-O2, -O", "", "also constant folding, copy propagation, dead code elimination; the default",
     "  '-O2 or '-O'            :  Agressive optimizations (default)",
     SetLevel, 2},
    {"-O3", "", "also loop-invariant code motion, more whole-grid calls, no checks of array indices",
     "  '-O3'                   :  Very agressive optimisations",
     SetLevel, 3},
    {"-w0, -w", "", "no warnings",
     "  '-w or -w0              :  No warnings",
     SetWarnings, 0},
    {"-w1", "", "the important warnings; the default",
     "  '-w1                    :  Log important warnings only (default)",
     SetWarnings, 1},
    {"-w2", "", "all warnings",
     "  '-w2                    :  Log all warnings",
     SetWarnings, 2},
    {"-IDIR", "", "searches DIR for included files, and for shadeop libraries after the working directory",
     "  '-I<dir>                :  Add directory for searching include files.",
     AddValue<&Options::folders>, 0},
    {"-DNAME, -DNAME=VALUE", "", "defines a preprocessor symbol",
     "  '-D<name>               :  Define a preprocessor symbol.",
     AddValue<&Options::macros>, 0},
    {"-E", "", "runs only the preprocessor; the result, SOURCE.i, stays beside the source",
     "  '-E                     :  Run only the preprocessor.",
     PreprocessOnly, 0},
    {"-c", "", "with '--dso': writes the C++ file, but does not build it",
     "  '-c                     :  Generate '.cpp' file, but don't compile it.",
     LeaveOutBuild, 0},
    {"--no-array-check", "", "no checks of array indices; a level after it turns them on again",
     "  '--no-array-check       :  Don't generate code that checks array bounds at run-time.",
     SetOption<&Options::checksArrayBounds>, 0},
    {"--keep-cpp-file, --dont-keep-cpp-file", "", "keeps the preprocessed file, SOURCE.i; not kept by default",
     "  '--[dont-]keep-cpp-file :  [Don't] keep file generated by the C++ preprossesor.\n"
     "                             (NOT kept by default)",
     SetStage<&Line::m_keepPreprocessedFile>, 1},
    {"--keep-c++-file, --dont-keep-c++-file", "", "keeps the C++ file of '--dso'; kept by default",
     "  '--[dont-]keep-c++-file :  [Don't] keep C++ file generated by the shader compiler.\n"
     "                             (kept by default)",
     SetStage<&Line::m_keepCCFile>, 1},
    {"--use-shadeops, --dont-use-shadeops", "", "looks for unknown functions in shadeop libraries; on by default",
     "  '--[dont-]use-shadeops  :  Enable [disable] use of shadeops (enable by default).",
     SetOption<&Options::usesShadeops>, 1},
    {"-v, --version", "", "alone: prints the version; ends with status 1",
     "  '-v' or '--version'     :  Print compiler's version number.",
     nullptr, 0},
    {"-h, --help", "", "alone: prints the options; ends with status 1",
     "  '-h' or '--help'        :  This description of the command.",
     nullptr, 0},
};
// clang-format on

/// True if the argument has this spelling. In a spelling like "-IDIR", the word after the letter
/// stands for any value.
constexpr bool Matches(std::string_view spelling, std::string_view argument)
{
    const bool hasValue = spelling.starts_with("-I") || spelling.starts_with("-D");
    return hasValue ? argument.starts_with(spelling.substr(0, 2)) : argument == spelling;
}

/// Returns the row's spelling that matches the argument; empty if none does.
constexpr std::string_view FindSpelling(const SlcOptionRow& row, std::string_view argument)
{
    std::string_view words = row.words;
    while (!words.empty()) {
        const std::string_view spelling = words.substr(0, words.find(','));
        if (Matches(spelling, argument))
            return spelling;
        words.remove_prefix(spelling.size());
        words.remove_prefix(words.empty() ? 0 : std::string_view(", ").size());
    }
    return {};
}

// True if no earlier row matches the first spelling of a row.
constexpr bool EachRowIsReached()
{
    for (const SlcOptionRow& row : k_rows)
        for (const SlcOptionRow* above = k_rows; above != &row; ++above)
            if (!FindSpelling(*above, row.words.substr(0, row.words.find(','))).empty())
                return false;
    return true;
}
static_assert(EachRowIsReached());

}  // namespace

std::span<const SlcOptionRow> SlcOptionRows()
{
    return k_rows;
}

SlcOptionResult SlcReadOption(SlcCommandLine& line, SlcArgumentList& arguments)
{
    for (const SlcOptionRow& row : k_rows) {
        const std::string_view spelling = FindSpelling(row, arguments.Front());
        if (spelling.empty() || !row.effect)
            continue;
        const int value = spelling.starts_with("--dont-") ? 1 - row.value : row.value;
        return row.effect(line, arguments, value) ? SlcOptionResult::Done : SlcOptionResult::Failed;
    }
    return SlcOptionResult::NoOption;
}
