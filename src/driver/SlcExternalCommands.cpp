// The preprocessor and the C++ compiler, run through the shell:
//
//     input_file=a.sl cpp_options=" -DX " cpp_result=a.i    in the environment
//     cc -E $cpp_options "$input_file" > "$cpp_result"      the command, from the environment too
//
// Tested by tests/driver/SlcExternalCommandsTest.cpp.

#include "driver/SlcExternalCommands.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <unistd.h>
#include <utility>

#include "driver/SlcProgramName.h"
#include "frontend/SlcParseCode.h"
#include "support/SlcDiagnostics.h"

namespace {

using Variables = std::initializer_list<std::pair<const char*, std::string>>;

/// While it lives, the process hears how its children end: a parent may have told it to ignore
/// that, and then no command has a result.
class DefaultChildSignal {
public:
    DefaultChildSignal()
    {
        struct sigaction action = {};
        action.sa_handler = SIG_DFL;
        sigaction(SIGCHLD, &action, &m_before);
    }
    ~DefaultChildSignal() { sigaction(SIGCHLD, &m_before, nullptr); }
    DefaultChildSignal(const DefaultChildSignal&) = delete;
    DefaultChildSignal& operator=(const DefaultChildSignal&) = delete;

private:
    struct sigaction m_before = {};
};

/// True if the variables could be set and the command returned 0.
[[nodiscard]] bool RunCommand(const std::string& command, Variables variables)
{
    for (const auto& [name, value] : variables)
        if (setenv(name, value.c_str(), 1) != 0)
            return false;
    const DefaultChildSignal childSignal;
    return std::system(command.c_str()) == 0;
}

}  // namespace

bool PreprocessSource(const SlcCommandLine& line)
{
    if (RunCommand(line.m_preprocessCommand, {{"cpp_options", " " + line.m_preprocessorOptions},
                                              {"input_file", line.m_inputFile},
                                              {"cpp_result", line.m_preprocessedFile}}))
        return true;
    SeverError(k_programName, "Problem during preprocessing.  Stopping.");
    return false;
}

bool BuildSharedObject(const SlcCommandLine& line)
{
    const std::string ccFile = g_ccFilename + ".cpp";
    const bool built = RunCommand(line.m_ccCommand, {{"output_dir", line.m_outputDirectory},
                                                     {"output_file", g_ccFilename + ".sqx"},
                                                     {"cc_input_file", ccFile}});
    if (!line.m_keepCCFile)
        unlink(ccFile.c_str());
    if (!built)
        SeverError(k_programName, "Problem during C++ compilation.  Stopping.");
    return built;
}
