// Times, order and parallel work are ninja's. This program writes its file, one step a source, and
// looks after what ninja cannot see: outputs that were removed, sources that are gone, files that
// have come in front of what was found, two builds in one folder, and at the end which shaders were
// refused.
//
// Tested by tests/make/run.sh.

#include "sqxmake/SqxMakeBuild.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>

#include "compile/SqxSearchedPlaces.h"
#include "process/SqxProcess.h"
#include "sqxmake/SqxMakeState.h"
#include "sqxmake/SqxNinjaFile.h"
#include "sqxmake/SqxSourceList.h"

namespace {

namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;

/// Keeps other builds out of the state for as long as it lives.
class Lock {
public:
    explicit Lock(const SqxMakeState& state)
        : m_file(open((state.Folder() / "lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644))
    {
        if (m_file < 0)
            throw SqxMakeError("Folder '" + state.Folder().string() + "' cannot be written");
        if (flock(m_file, LOCK_EX | LOCK_NB) != 0)
            throw SqxMakeError("Another sqxmake works in '" + state.Folder().string() + "'");
    }
    ~Lock() { close(m_file); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    int m_file;
};

/// Ninja looks at times only. It must not take a shader for compiled whose file is gone, and the
/// output of a source that is gone must not be taken for a shader of the library.
void ForgetWhatIsGone(const SqxMakeState& state, const fs::path& outputFolder)
{
    for (const auto& entry : fs::directory_iterator(state.Folder() / "stamps")) {
        const auto stamp = SqxMakeState::ReadStamp(entry.path());
        if (stamp && (!fs::exists(stamp->source) || !fs::exists(outputFolder / stamp->output)))
            state.Discard(entry.path(), outputFolder);
    }
}

/// Ninja compiles again what is older than its source.
void MakeOldWhatHasNews(const SqxMakeState& state, const Paths& sources)
{
    for (const fs::path& source : sources) {
        const std::string id = SqxMakeState::IdOf(source);
        std::ifstream searched(state.SearchedOf(id));
        if (!SqxSearchedPlaces::Read(searched).HasNews())
            continue;
        std::error_code isGone;
        const auto time = fs::last_write_time(source, isGone);
        if (!isGone)
            fs::last_write_time(state.StampOf(id), time - std::chrono::seconds(1), isGone);
    }
}

/// Ninja is told to end by the same key, and says so; this program has to stay for its status.
void LeaveInterruptsToNinja()
{
    struct sigaction nothing = {};
    nothing.sa_handler = [](int) {};
    sigaction(SIGINT, &nothing, nullptr);
}

[[nodiscard]] int RunNinja(const SqxMakeOptions& options, const fs::path& file)
{
    const char* ninja = std::getenv("NINJA");
    SqxCommand command;
    command.words = {ninja && *ninja ? ninja : "ninja", "-f", file.string()};
    if (!isatty(STDOUT_FILENO))
        command.words.emplace_back("--quiet");
    if (options.jobs > 0)
        command.words.push_back("-j" + std::to_string(options.jobs));
    if (options.keepGoing)
        command.words.emplace_back("-k0");
    command.variables = {{"NINJA_STATUS", "[%f/%t] "}};
    LeaveInterruptsToNinja();
    std::cout.flush();
    const int status = SqxRunCommand(command);
    if (status == 127)
        throw SqxMakeError("'" + command.words[0] +
                           "' cannot be run: install ninja (the Debian package ninja-build)");
    return status;
}

/// What became of each source.
class Summary {
public:
    Summary(const Paths& sources, const SqxMakeState& state)
    {
        for (const fs::path& source : sources) {
            const std::string id = SqxMakeState::IdOf(source);
            if (fs::exists(state.FailureOf(id)))
                m_failed.push_back(source);
            else if (!fs::exists(state.StampOf(id)))
                m_untried.push_back(source);
        }
        m_all = sources.size();
    }

    void Print(bool keptGoing) const
    {
        const std::size_t good = m_all - m_failed.size() - m_untried.size();
        if (m_failed.empty() && m_untried.empty()) {
            std::cout << Count(m_all) << " up to date\n";
            return;
        }
        if (m_failed.empty()) {
            std::cerr << "sqxmake: The build stopped with " << Count(m_untried.size())
                      << " not compiled\n";
            return;
        }
        std::cerr << "sqxmake: " << good << " of " << Count(m_all) << " compiled, "
                  << m_failed.size() << " refused:\n";
        for (const fs::path& source : m_failed)
            std::cerr << "  " << source.string() << '\n';
        if (!keptGoing)
            std::cerr << "Others may not have been tried; '-k' goes on behind faults\n";
    }

private:
    [[nodiscard]] static std::string Count(std::size_t count)
    {
        return std::to_string(count) + (count == 1 ? " shader" : " shaders");
    }

    std::size_t m_all = 0;
    Paths m_failed;
    Paths m_untried;
};

}  // namespace

int SqxMakeBuild(const SqxMakeOptions& options)
{
    const Paths sources = SqxListSources(options.inputs);
    const SqxMakePrograms programs = {SqxProgramBeside("sqxmake"), SqxProgramBeside("shaderqx")};
    const SqxMakeState state(options.stateFolder);
    state.Create();
    const Lock lock(state);
    ForgetWhatIsGone(state, options.outputFolder);
    MakeOldWhatHasNews(state, sources);
    for (const fs::path& source : sources)
        fs::remove(state.FailureOf(SqxMakeState::IdOf(source)));

    const fs::path file = state.Folder() / "build.ninja";
    SqxWriteText(file, SqxNinjaFile(options, sources, state, programs));
    const int status = RunNinja(options, file);
    Summary(sources, state).Print(options.keepGoing);
    return status == 0 ? 0 : 1;
}
