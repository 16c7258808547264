// Times, order and parallel work are ninja's. This program writes its file, one step a source, and
// looks after what ninja cannot see: two sources of one output, outputs that were removed, sources
// that are gone, files that come before what was found, two builds in one folder, and refused
// shaders.
//
// Tested by tests/make/run.sh.

#include "sqxmake/SqxMakeBuild.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <set>
#include <system_error>

#include "compile/SqxSearchedPlaces.h"
#include "process/SqxFileLock.h"
#include "process/SqxProcess.h"
#include "sqxmake/SqxMakeOutcome.h"
#include "sqxmake/SqxMakeState.h"
#include "sqxmake/SqxNameConflicts.h"
#include "sqxmake/SqxNinjaFile.h"
#include "sqxmake/SqxRunNinja.h"
#include "sqxmake/SqxSourceList.h"

namespace {

namespace fs = std::filesystem;
using SourceList = std::vector<SqxSource>;

/// Keeps other builds out of the state for as long as it lives.
class Lock {
public:
    explicit Lock(const SqxMakeState& state)
        : m_lock(state.Folder() / "lock", SqxFileLock::IfTaken::GiveUp)
    {
        const std::string folder = "'" + state.Folder().string() + "'";
        if (m_lock.Found() == SqxFileLock::State::Taken)
            throw SqxMakeError("Another sqxmake is already running in " + folder);
        if (m_lock.Found() == SqxFileLock::State::Failed)
            throw SqxMakeError("Folder " + folder + " cannot be written");
    }

private:
    SqxFileLock m_lock;
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

/// Ages the outputs of sources whose searched places have changed, so that ninja compiles them
/// again.
void MarkStale(const SqxMakeState& state, const SourceList& sources)
{
    for (const auto& [source, folder] : sources) {
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

/// Without the sources of the conflicts.
[[nodiscard]] SourceList Without(const SqxNameConflicts& conflicts, SourceList sources)
{
    std::set<fs::path> leftOut;
    for (const auto& [output, makers] : conflicts)
        leftOut.insert(makers.begin(), makers.end());
    std::erase_if(sources, [&](const SqxSource& source) { return leftOut.contains(source.path); });
    return sources;
}

}  // namespace

int SqxMakeBuild(const SqxMakeOptions& options)
{
    const SourceList all = SqxListSources(options.inputs);
    const SqxMakeState state(options.stateFolder);
    state.Create();
    const Lock lock(state);
    const SqxNameConflicts conflicts = SqxFindNameConflicts(all, options);
    SqxReportNameConflicts(conflicts, options);
    if (!conflicts.empty() && !options.keepGoing)
        return 1;
    const SourceList sources = Without(conflicts, all);
    ForgetWhatIsGone(state, options.outputFolder);
    MarkStale(state, sources);
    state.Resume();

    const fs::path file = state.Folder() / "build.ninja";
    SqxWriteText(file, SqxNinjaFile(options, sources, state, SqxProgramBeside("sqxmake")));
    state.WriteOptions({fs::current_path(), options.compilerOptions});
    const SqxMakeOutcome outcome(sources, state);
    const int status = SqxRunNinja(options, file);
    const bool isWhole = outcome.Print(options.keepGoing, all.size() - sources.size());
    if (SqxWasInterrupted(status)) {
        // The shell that runs this in a loop stops only for a program that ended by the signal.
        std::signal(SIGINT, SIG_DFL);
        std::raise(SIGINT);
    }
    return status == 0 && isWhole ? 0 : 1;
}
