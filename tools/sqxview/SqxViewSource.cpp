// A compile lists the files that it has read and the paths at which it found no header. Both are
// watched from then on. A change during the compile is noticed, too: a file that was already
// watched is compared with its state before the compile, and a file that is new to the watch counts
// as changed if its time is not before the start of the compile. The start is the time of the
// compile's folder, since the system sets the times of files a little earlier than the clock.
//
// All compiles of a source use one temporary folder. While a source has errors, the folder that
// contains it is watched. This may be the system's folder for temporary files, and a new temporary
// folder for each compile would change it and so cause the next compile.
//
// Tested by tests/sqxview.

#include "sqxview/SqxViewSource.h"

#include <fstream>

#include "compile/SqxSourceCompile.h"
#include "picture/SqxPictureSettings.h"
#include "process/SqxScratchFolder.h"
#include "sqxdump/SqxListing.h"

namespace {

[[nodiscard]] std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Opens the shader of a successful compile and stores it with its listing. Throws
/// `std::runtime_error` if it cannot be run, for example without a shadeop library.
void Open(SqxViewCompiled& compiled, const std::filesystem::path& file, const std::string& name,
          const std::vector<std::string>& folders)
{
    const std::string bytes = ReadFile(file);
    compiled.listing =
        SqxListingText({name, file.stem().string(), SqxByteCodeFacts(bytes, name, folders)}, {});
    compiled.shader = QxShader::Read(bytes, name, folders);
}

}  // namespace

SqxViewSource::SqxViewSource(std::string path, SqxViewCompileOptions options)
    : m_path(std::move(path)),
      m_options(std::move(options)),
      m_watch({m_path})
{
}

/// Watches the source and the files; if there is no shader, also the folder of the source and those
/// of shadeop libraries, since a missing file may be created there later.
void SqxViewSource::WatchFor(const SqxViewCompiled& compiled, std::set<std::string> files,
                             const SqxViewWatch::Time& start)
{
    files.insert(m_path);
    if (!compiled.shader) {
        const std::string parent = std::filesystem::path(m_path).parent_path();
        files.insert(parent.empty() ? "." : parent);
        for (const std::string& folder : m_options.folders)
            files.insert(folder);
    }
    m_watch.Replace(files, start);
}

/// Returns an empty folder for a compile, always of the same path.
std::filesystem::path SqxViewSource::WorkFolder()
{
    // The system may remove temporary files that are some days old.
    if (!m_scratch || !std::filesystem::exists(m_scratch->Path()))
        m_scratch = std::make_unique<SqxScratchFolder>("sqxview");
    const std::filesystem::path work = m_scratch->Path() / "compile";
    std::filesystem::remove_all(work);
    std::filesystem::create_directory(work);
    return work;
}

std::optional<SqxViewCompiled> SqxViewSource::Compile(const std::function<bool()>& isOver)
{
    SqxViewWatch::Time start = {};
    m_watch.Refresh();
    m_isCompiled = false;
    SqxViewCompiled compiled;
    std::set<std::string> files;
    std::set<std::string> missing;
    bool isEnded = false;
    try {
        const std::filesystem::path work = WorkFolder();
        start = SqxViewWatch::TimeOf(work);
        SqxSourceCompile compile(m_path, m_options.words, work);
        const bool isBuilt =
            compile.RunApart([&] { return isEnded = isEnded || isOver() || m_watch.HasChanged(); });
        if (isEnded)
            return std::nullopt;
        compiled.report = compile.Messages();
        files = compile.FilesRead();
        missing = compile.PlacesSearched().MissingHeaders();
        if (isBuilt)
            Open(compiled, compile.Output(), m_path, m_options.folders);
    } catch (const std::exception& error) {
        compiled.report += std::string(error.what()) + "\n";
    }
    compiled.excerpts =
        SqxViewExcerptsOf(compiled.report, [&](const std::string& file, auto& text) {
            if (!files.contains(file))
                return false;
            text = ReadFile(file);
            return true;
        });
    files.merge(std::move(missing));
    WatchFor(compiled, std::move(files), start);
    m_isCompiled = true;
    return compiled;
}
