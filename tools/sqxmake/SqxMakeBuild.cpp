// Ninja compares times, orders the steps and runs them in parallel. This program writes the file
// for ninja, with one step per source, and handles what ninja does not see: two sources with the
// same output, removed outputs and sources, new files that would be found before those of the last
// compile, changed files that ninja cannot name, two builds in one folder, and sources with errors.
//
// Tested by tests/make/run.sh.

#include "sqxmake/SqxMakeBuild.h"

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

/// Locks the state against other builds as long as the object exists.
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

/// Discards stamps whose output was removed: ninja checks only the stamps, so it would not compile
/// their sources again. Discards outputs whose source was removed, since they no longer belong to
/// the library.
void DiscardRemoved(const SqxMakeState& state, const fs::path& outputFolder)
{
    for (const auto& entry : fs::directory_iterator(state.Folder() / "stamps")) {
        const auto stamp = SqxMakeState::ReadStamp(entry.path());
        if (stamp && (!fs::exists(stamp->source) || !fs::exists(outputFolder / stamp->output)))
            state.Discard(entry.path(), outputFolder);
    }
}

/// Makes the stamp of a source older than the source, so that ninja compiles it again, for two
/// reasons that ninja does not see: new files where the last successful compile searched for
/// headers or shadeop libraries, and changed files that it read and that ninja cannot name.
void MarkStale(const SqxMakeState& state, const SourceList& sources)
{
    for (const auto& [source, folder] : sources) {
        const std::string id = SqxMakeState::IdOf(source);
        std::ifstream searched(state.SearchedOf(id));
        if (SqxSearchedPlaces::Read(searched).HasNewFiles() || state.HasChangedUnnamed(id))
            state.MarkStale(source);
    }
}

/// Returns the sources that are in no conflict.
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
    DiscardRemoved(state, options.outputFolder);
    MarkStale(state, sources);
    state.Resume();

    const fs::path file = state.Folder() / "build.ninja";
    SqxWriteText(file, SqxNinjaFile(options, sources, state, SqxProgramBeside("sqxmake")));
    state.WriteOptions({fs::current_path(), options.compilerOptions});
    const SqxMakeOutcome outcome(sources, state);
    const int status = SqxRunNinja(options, file);
    const bool isWhole = outcome.Print(options.keepGoing, all.size() - sources.size());
    if (SqxWasInterrupted(status)) {
        // The shell ends a loop of commands only if the signal itself ends this process.
        std::signal(SIGINT, SIG_DFL);
        std::raise(SIGINT);
    }
    return status == 0 && isWhole ? 0 : 1;
}
