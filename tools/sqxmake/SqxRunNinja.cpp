// The output of ninja is a sequence of lines: the progress, which starts with a mark that is set
// here; the output of steps; and messages of ninja, most of which start with its name. Steps
// succeed even for a source with errors, so a failed step means that the build itself failed. Ninja
// then prints "FAILED: " and the whole command; both are left out.
//
// Tested by tests/make/run.sh.

#include "sqxmake/SqxRunNinja.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <unistd.h>
#include <utility>

#include "process/SqxProcess.h"
#include "sqxmake/SqxCompileStep.h"

namespace {

constexpr std::string_view k_mark = "\x01";
constexpr std::string_view k_ownWords = "ninja: ";
constexpr std::string_view k_error = "ninja: error: ";
constexpr std::string_view k_failed = "FAILED: ";
constexpr const char* k_clearLine = "\r\x1b[K";

class Output {
public:
    void Show(const std::string& line)
    {
        if (line.starts_with(k_mark))
            ShowProgress(line.substr(k_mark.size()));
        else if (line.starts_with(k_failed))
            m_isCommandNext = true;
        else if (std::exchange(m_isCommandNext, false))
            return;
        else if (line.starts_with(k_error))
            Print("sqxmake: The build cannot go on: " + line.substr(k_error.size()));
        else if (!line.starts_with(k_ownWords))
            Print(line);
    }

    void End() const
    {
        if (m_isTerminal)
            std::cout << k_clearLine << std::flush;
    }

private:
    void ShowProgress(const std::string& text) const
    {
        if (m_isTerminal)
            std::cout << k_clearLine << text << std::flush;
    }

    void Print(const std::string& line) const
    {
        End();
        std::cerr << line << std::endl;
    }

    bool m_isTerminal = isatty(STDOUT_FILENO) != 0;
    bool m_isCommandNext = false;
};

/// The interrupt key ends ninja and the steps, but not this program, which still prints the result.
void LeaveInterruptsToNinja()
{
    struct sigaction nothing = {};
    nothing.sa_handler = [](int) {};
    sigaction(SIGINT, &nothing, nullptr);
}

}  // namespace

int SqxRunNinja(const SqxMakeOptions& options, const std::filesystem::path& file)
{
    const char* ninja = std::getenv("NINJA");
    SqxCommand command;
    command.words = {ninja && *ninja ? ninja : "ninja", "-f", file.string()};
    // Needed although sources with errors are no failures for ninja: a step may still crash.
    if (options.keepGoing)
        command.words.emplace_back("-k0");
    if (options.jobs > 0)
        command.words.push_back("-j" + std::to_string(options.jobs));
    command.variables = {{"NINJA_STATUS", std::string(k_mark) + "[%f/%t] "},
                         {k_sqxMakeMember, options.keepGoing ? "" : std::string(k_sqxMakeStops)}};
    Output output;
    command.onLine = [&](const std::string& line) { output.Show(line); };
    LeaveInterruptsToNinja();
    const int status = SqxRunCommand(command);
    output.End();
    if (status == 127)
        throw SqxMakeError("'" + command.words[0] +
                           "' cannot be run: install ninja (the Debian package ninja-build)");
    return status;
}

bool SqxWasInterrupted(int status)
{
    // Since version 1.13 ninja returns 128 + SIGINT, before that 2.
    return status == 2 || status == 128 + SIGINT;
}
