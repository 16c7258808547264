// After some variables, the file contains one rule, and one statement per source:
//
//     build .sqxmake/stamps/matte-ID: compile shaders/matte.sl | sqxmake
//
// The output is a stamp, since the name of the `.sqx` file is that of the shader, which only the
// compiler knows. The environment variables that change compiled shaders are written to a response
// file: ninja compares its content like a command, but does not print it.
//
// Ninja's values cannot contain line breaks. If an option contains one, the command takes it from a
// variable of the shell, `n` or `r`:
//
//     n=$(printf '\nx'); n=${n%x}; ... exec sqxmake ... '-DA=1'"$n"'2'
//
// Tested by tests/make/run.sh.

#include "sqxmake/SqxNinjaFile.h"

#include <algorithm>
#include <cstdlib>

#include "make/SqxMakeWord.h"
#include "process/SqxProcess.h"

namespace {

namespace fs = std::filesystem;

const std::string k_setLineBreaks = "n=$(printf '\\nx'); n=${n%x}; r=$(printf '\\r'); ";

/// Escapes a path for a `build` line. Ninja has no escape for a bar, so a variable contains it.
[[nodiscard]] std::string NinjaPath(const fs::path& path)
{
    std::string escaped;
    for (const char c : path.string()) {
        if (c == '$' || c == ' ' || c == ':')
            escaped += '$';
        escaped += c == '|' ? std::string("${bar}") : std::string(1, c);
    }
    return escaped;
}

/// Escapes a text for the value of a variable.
[[nodiscard]] std::string NinjaText(const std::string& text)
{
    std::string escaped;
    for (const char c : text)
        escaped += c == '$' ? std::string("$$") : std::string(1, c);
    return escaped;
}

/// Quotes a text as a word of the shell. Variables replace line breaks, see `k_setLineBreaks`.
[[nodiscard]] std::string WordOnOneLine(const std::string& text)
{
    std::string word;
    for (const char c : SqxShellWord(text))
        if (c == '\n' || c == '\r')
            word += c == '\n' ? "'\"$n\"'" : "'\"$r\"'";
        else
            word += c;
    return word;
}

/// Returns the environment variables that change compiled shaders and are set, with their values,
/// in one line.
[[nodiscard]] std::string EnvironmentText()
{
    std::string text = "environment:";  // ninja requires that a response file is not empty
    for (const char* name : {"SLC_CPP_COMMAND", "SLC_CC_COMMAND", "SLC_CC_OPTIONS",
                             "SLC_CC_PROCESSOR", "SLC_CC_INCLUDE"})
        if (const char* value = std::getenv(name))
            text += " " + WordOnOneLine(std::string(name) + "=" + value);
    return text;
}

[[nodiscard]] std::string OptionsText(const SqxMakeOptions& options)
{
    std::string text;
    for (const std::string& option : options.compilerOptions)
        text += (text.empty() ? "" : " ") + WordOnOneLine(option);
    return text;
}

[[nodiscard]] bool HasLineBreaks(const SqxMakeOptions& options)
{
    return std::any_of(options.compilerOptions.begin(), options.compilerOptions.end(),
                       SqxHasLineBreak);
}

}  // namespace

std::string SqxNinjaFile(const SqxMakeOptions& options, const std::vector<SqxSource>& sources,
                         const SqxMakeState& state, const fs::path& program)
{
    // With `exec` the step replaces the shell that ninja starts.
    const std::string step = (HasLineBreaks(options) ? k_setLineBreaks + "exec " : "exec ") +
                             SqxShellWord(program.string()) + " --state " +
                             SqxShellWord(state.Folder().string()) + " -o " +
                             SqxShellWord(options.outputFolder.string());
    std::string text = "ninja_required_version = 1.7\n"
                       "builddir = " +
                       NinjaText(state.Folder().string()) +
                       "\n"
                       "bar = |\n"
                       "rule compile\n"
                       "  command = " +
                       NinjaText(step) + (options.tree ? " --below $below" : "") + " --step $out " +
                       NinjaText(OptionsText(options)) +
                       " -- $in\n"
                       "  description = $in\n"
                       "  depfile = $out.d\n"
                       "  deps = gcc\n"
                       "  rspfile = $out.environment\n"
                       "  rspfile_content = " +
                       NinjaText(EnvironmentText()) + "\n";
    const std::string compiler = " | " + NinjaPath(program) + "\n";
    for (const SqxSource& source : sources) {
        text += "build " + NinjaPath(state.StampOf(SqxMakeState::IdOf(source.path))) +
                ": compile " + NinjaPath(source.path) + compiler;
        if (options.tree)
            text += "  below = " + NinjaText(SqxShellWord(source.folder.string())) + "\n";
    }
    return text;
}
