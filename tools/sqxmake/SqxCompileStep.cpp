// A source is compiled in a folder of its own; what comes of it is compared with what stands in the
// output folder, and its owner looked up, before it is taken. So whatever happens on the way, the
// output folder holds whole shaders only:
//
//     compile in work/ID;  claim the output's name;  compare;  rename into place;  write the stamp
//
// An output that came out the same keeps its time: what depends on it is not made again. The stamp
// comes last, for ninja takes it for the proof.
//
// Tested by tests/make/run.sh.

#include "sqxmake/SqxCompileStep.h"

#include <iostream>
#include <system_error>

#include "compile/SqxSourceCompile.h"
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
        Prepare();
        m_compile.WriteDependencies(m_options.stamp.string() + ".d", m_options.stamp.string());
        const int status = m_compile.Run();
        std::cerr << m_compile.Messages() << std::flush;
        const bool taken = status == 0 && TakeOutput();
        if (!taken)
            Refuse();
        fs::remove_all(m_work);
        return taken ? 0 : 1;
    }

private:
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
        fs::remove(m_state.FailureOf(m_id));
    }

    /// False after a report.
    [[nodiscard]] bool TakeOutput() const
    {
        const fs::path compiled = m_compile.Output();
        const std::string name = compiled.filename().string();
        const std::string source = fs::absolute(m_source).lexically_normal().string();
        if (const auto owner = m_state.Claim(name, source)) {
            std::cerr << "sqxmake: '" << m_source.string() << "' and '" << *owner << "' both make '"
                      << name << "'\n";
            return false;
        }
        const auto known = SqxMakeState::ReadStamp(m_options.stamp);
        if (known && known->output != name)
            m_state.Discard(m_options.stamp, m_options.outputFolder);
        const fs::path target = m_options.outputFolder / name;
        const auto before = SqxReadText(target);
        if (!before || *before != SqxReadText(compiled)) {
            std::error_code failed;
            fs::rename(compiled, target, failed);
            if (failed)
                fs::copy_file(compiled, target, fs::copy_options::overwrite_existing);
        }
        SqxWriteText(m_state.SearchedOf(m_id), m_compile.PlacesSearched().Text());
        SqxMakeState::WriteStamp(m_options.stamp, {source, name});
        return true;
    }

    void Refuse() const
    {
        m_state.Discard(m_options.stamp, m_options.outputFolder);
        SqxWriteText(m_state.FailureOf(m_id), m_source.string() + "\n");
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
