// A program is started by fork and exec without a shell, so that paths need no quoting. Between the
// two, the child makes only calls that are safe after the fork of a process with several threads:
// another thread may have held the lock of the heap or of the environment, and the child would wait
// for it forever. So words and environment are completed before the fork. If a call fails, the
// child exits like a command that was not found.
//
// As long as the child may have to be ended, its end is checked without reaping it: once it is
// reaped, its process number may belong to another process.
//
// A child with a process group of its own gets no signal of the terminal. So it also asks the
// system for a signal when this program ends, however that happens. The system sends it when the
// thread ends that started the child, which waits for the child here.
//
// Tested by tests/make/run.sh, tests/sqxshade/SqxShadeTest.cpp and
// tests/sqxls/SqxLsProgramTest.cpp.

#include "process/SqxProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int k_notStarted = 127;

/// Returns the environment of this process with the variables of the command: `NAME=VALUE` each.
[[nodiscard]] std::vector<std::string> EnvironmentFor(const SqxCommand& command)
{
    std::vector<std::string> environment;
    for (const auto& [name, value] : command.variables)
        environment.push_back(name + '=' + value);
    const auto isReplaced = [&](std::string_view own) {
        return std::any_of(
            command.variables.begin(), command.variables.end(),
            [&](const auto& set) { return own.substr(0, own.find('=')) == set.first; });
    };
    for (char** own = environ; *own; ++own)
        if (!isReplaced(*own))
            environment.emplace_back(*own);
    return environment;
}

/// Returns the texts in the form of exec: pointers, and null at the end. They are valid as long as
/// `texts` does not change.
[[nodiscard]] std::vector<char*> Pointers(const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

/// Puts the child into its own process group, which ends when the program `parent` does. Returns
/// false if that fails or if the program has ended already.
[[nodiscard]] bool LeadGroup(pid_t parent)
{
    return setpgid(0, 0) == 0 && prctl(PR_SET_PDEATHSIG, SIGTERM) == 0 && getppid() == parent;
}

/// Runs in the child of `parent` and never returns.
[[noreturn]] void Become(const SqxCommand& command, char* const* words, char* const* environment,
                         int output, pid_t parent)
{
    // The child must not inherit how this program handles signals.
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    signal(SIGPIPE, SIG_DFL);
    if (command.isOver && !LeadGroup(parent))
        _exit(k_notStarted);
    if (!command.output.empty())
        output = open(command.output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if ((!command.output.empty() || command.onLine) &&
        (output < 0 || dup2(output, STDOUT_FILENO) < 0 || dup2(output, STDERR_FILENO) < 0))
        _exit(k_notStarted);
    if (!command.folder.empty() && chdir(command.folder.c_str()) != 0)
        _exit(k_notStarted);
    execvpe(words[0], words, environment);
    _exit(k_notStarted);
}

/// Ends the process group of a child once the test of its command returns true: by SIGTERM, so that
/// programs can remove their temporary files, and after two seconds by SIGKILL.
class GroupEnd {
public:
    GroupEnd(pid_t child, const std::function<bool()>& isOver) : m_child(child), m_isOver(isOver) {}

    /// To be called every few milliseconds until the child has ended.
    void Check()
    {
        if (m_hasBegun) {
            if (std::chrono::steady_clock::now() > m_latest)
                Kill();
        } else if (m_isOver()) {
            m_hasBegun = true;
            m_latest = std::chrono::steady_clock::now() + std::chrono::seconds(2);
            setpgid(m_child, m_child);  // the child may not have called it yet
            kill(-m_child, SIGTERM);
        }
    }
    /// To be called when the child has ended and is not reaped yet. Kills the rest of the group if
    /// the test has returned true.
    void Complete() const
    {
        if (m_hasBegun)
            Kill();
    }

private:
    void Kill() const { kill(-m_child, SIGKILL); }

    pid_t m_child;
    const std::function<bool()>& m_isOver;
    bool m_hasBegun = false;
    std::chrono::steady_clock::time_point m_latest;
};

/// Waits until there is something to read.
void WaitForText(int pipe, GroupEnd& end)
{
    constexpr int k_milliseconds = 10;
    pollfd wanted = {pipe, POLLIN, 0};
    while (poll(&wanted, 1, k_milliseconds) == 0)
        end.Check();
}

/// Passes on lines from the pipe until no process has it open for writing, and then a last line
/// without a line break.
void ReadLines(int pipe, const SqxCommand& command, GroupEnd& groupEnd)
{
    const auto& onLine = command.onLine;
    std::string text;
    std::array<char, 4096> piece;
    const auto readSome = [&] {
        if (command.isOver)
            WaitForText(pipe, groupEnd);
        return read(pipe, piece.data(), piece.size());
    };
    for (ssize_t count = 0; (count = readSome()) != 0;) {
        if (count < 0 && errno != EINTR)
            break;
        text.append(piece.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        std::size_t start = 0;
        for (std::size_t end = 0; (end = text.find('\n', start)) != std::string::npos;
             start = end + 1)
            onLine(text.substr(start, end - start));
        text.erase(0, start);
    }
    if (!text.empty())
        onLine(text);
}

/// Waits until the child ends, and ends it if the test of its command returns true.
void WaitWatching(pid_t child, GroupEnd& groupEnd)
{
    siginfo_t end = {};
    while (waitid(P_PID, static_cast<id_t>(child), &end, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           end.si_pid == 0) {
        groupEnd.Check();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    groupEnd.Complete();
}

[[nodiscard]] int StatusOf(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) != child)
        if (errno != EINTR)
            return k_notStarted;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

int SqxRunCommand(const SqxCommand& command)
{
    const std::vector<std::string> environment = EnvironmentFor(command);
    const std::vector<char*> words = Pointers(command.words);
    const std::vector<char*> variables = Pointers(environment);
    std::array<int, 2> pipe = {-1, -1};
    if (command.onLine && pipe2(pipe.data(), O_CLOEXEC) != 0)
        return k_notStarted;
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0)
        Become(command, words.data(), variables.data(), pipe[1], parent);
    GroupEnd groupEnd(child, command.isOver);
    if (command.onLine) {
        close(pipe[1]);
        if (child > 0)
            ReadLines(pipe[0], command, groupEnd);
        close(pipe[0]);
    }
    if (child < 0)
        return k_notStarted;
    if (command.isOver)
        WaitWatching(child, groupEnd);
    return StatusOf(child);
}

std::filesystem::path SqxProgramBeside(const std::string& name)
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name;
}

std::string SqxShellWord(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}
