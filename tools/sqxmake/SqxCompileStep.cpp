// A source is compiled in a separate folder, and only a finished result is moved to the output
// folder, so that a failed compile leaves no incomplete shader there:
//
//     compile in work/ID;  claim the output's name;  compare;  rename into place;  write the stamp
//
// The result is not moved if another source owns an output of that name, or if it equals the file
// in the output folder. That file then keeps its time, so that files which depend on it are not
// rebuilt. The stamp is written last, since ninja takes it as proof of success.
//
// Tested by tests/make/run.sh.

#include "sqxmake/SqxCompileStep.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <system_error>

#include "compile/SqxSourceCompile.h"
#include "make/SqxMakeWord.h"
#include "sqxmake/SqxMakeState.h"

namespace {

namespace fs = std::filesystem;

class CompileStep {
public:
    explicit CompileStep(const SqxMakeOptions& options)
        : m_options(options),
          m_state(fs::absolute(options.stateFolder)),
          m_source(options.inputs.front()),
          m_id(SqxMakeState::IdOf(m_source)),
          m_work(m_state.WorkOf(m_id)),
          m_compile(m_source, options.compilerOptions, m_work)
    {
    }

    [[nodiscard]] int Run()
    {
        if (IsMember() && m_state.IsStopped())
            return EndWithoutStamp();
        Prepare();
        const bool isBuilt = m_compile.Run();
        std::string reports = m_compile.Messages();
        const bool taken = isBuilt && TakeOutput(reports);
        fs::remove_all(m_work);
        if (!taken)
            return Refuse(reports);
        std::cerr << reports << std::flush;
        fs::remove(m_state.FailureOf(m_id));
        return 0;
    }

private:
    /// True if a build of this program runs the step. The build reads from the state which sources
    /// had errors, and takes a failed step for a failure of the build itself.
    [[nodiscard]] static bool IsMember() { return std::getenv(k_sqxMakeMember) != nullptr; }

    /// Writes the names of the files that were read. In a build, names that a version of ninja may
    /// misread are written to the state instead, for `MarkStale` of the next build. Another build
    /// system that misreads such a name compiles the source each time, since it finds no file of
    /// that name. Outside a build of `sqxmake`, throws `SqxMakeError` for a line break in a name.
    void WriteDependencies() const
    {
        std::vector<std::string> files;
        std::vector<std::string> unnamed;
        for (const std::string& file : m_compile.FilesRead())
            (IsMember() && !SqxNinjaReads(file) ? unnamed : files).push_back(file);
        if (std::any_of(files.begin(), files.end(), SqxHasLineBreak))
            throw SqxMakeError("No rule can name a file with a line break in its path");
        m_state.WriteUnnamed(m_id, unnamed);
        WriteRule(files);
    }

    void WriteRule(const std::vector<std::string>& files) const
    {
        const std::string stamp = m_options.stamp.string();
        SqxWriteText(stamp + ".d", SqxMakeRule({SqxMakeTarget(stamp, SqxRuleReader::Ninja)}, files,
                                               SqxRuleReader::Ninja));
    }

    /// Writes an empty rule, but no stamp, so that ninja runs the step again the next time. It
    /// would not compare an older stamp with the headers, which the empty rule does not name.
    [[nodiscard]] int EndWithoutStamp() const
    {
        WriteRule({});
        m_state.MarkStale(m_source);
        return 0;
    }

    void Prepare() const
    {
        m_state.Create();
        std::error_code failed;
        fs::create_directories(m_options.outputFolder, failed);
        if (!failed)
            fs::remove_all(m_work, failed);
        if (!failed)
            fs::create_directory(m_work, failed);
        if (failed)
            throw SqxMakeError("Cannot work in '" + m_work.string() + "': " + failed.message());
    }

    /// Moves the output into place, unless an equal file is there, and writes the dependencies, the
    /// searched paths and the stamp. Removes the previous output of the source if that has another
    /// name. If the output belongs to another source, adds a report and returns false instead.
    [[nodiscard]] bool TakeOutput(std::string& reports) const
    {
        const fs::path compiled = m_compile.Output();
        const std::string name =
            (m_options.below / compiled.filename()).lexically_normal().string();
        const std::string source = fs::absolute(m_source).lexically_normal().string();
        if (const auto owner = m_state.Claim(name, source)) {
            reports += "sqxmake: '" + m_source.string() + "' and '" + *owner + "' both make '" +
                       name + "'\n";
            return false;
        }
        const auto known = SqxMakeState::ReadStamp(m_options.stamp);
        if (known && known->output != name)
            m_state.Discard(m_options.stamp, m_options.outputFolder);
        WriteDependencies();
        const fs::path target = m_options.outputFolder / name;
        fs::create_directories(target.parent_path());
        const auto before = SqxReadText(target);
        if (!before || *before != SqxReadText(compiled)) {
            std::error_code failed;
            fs::rename(compiled, target, failed);
            if (failed)
                SqxWriteText(target, SqxReadText(compiled).value());
        }
        SqxWriteText(m_state.SearchedOf(m_id), m_compile.PlacesSearched().Text());
        SqxMakeState::WriteStamp(m_options.stamp, {source, name});
        return true;
    }

    /// Discards the stamp and the output of an earlier compile, and records and prints the reports.
    /// In a build, recorded reports are not printed again for an unchanged source, and steps that
    /// start later compile nothing if the build stops at errors. Returns the exit status: 0 in a
    /// build, otherwise 1.
    [[nodiscard]] int Refuse(const std::string& reports) const
    {
        m_state.Discard(m_options.stamp, m_options.outputFolder);
        const fs::path failure = m_state.FailureOf(m_id);
        std::error_code isGone;
        const bool isKnown =
            SqxReadText(failure) == reports &&
            fs::last_write_time(failure, isGone) > fs::last_write_time(m_source, isGone);
        if (!isKnown)
            SqxWriteText(failure, reports);
        const char* member = std::getenv(k_sqxMakeMember);
        if (!isKnown || !member)
            std::cerr << reports << std::flush;
        if (!member)
            return 1;
        if (member == k_sqxMakeStops)
            m_state.Stop();
        return EndWithoutStamp();
    }

    const SqxMakeOptions& m_options;
    SqxMakeState m_state;
    fs::path m_source;
    std::string m_id;
    fs::path m_work;
    SqxSourceCompile m_compile;
};

}  // namespace

int SqxCompileStep(const SqxMakeOptions& options)
{
    return CompileStep(options).Run();
}

int SqxCompileForAnother(const SqxMakeOptions& options)
{
    SqxSourceCompile compile(options.inputs.front(), options.compilerOptions,
                             options.compileFolder);
    return compile.RunForAnother() ? 0 : 1;
}
