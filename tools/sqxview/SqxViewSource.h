#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/QxShader.h"
#include "process/SqxScratchFolder.h"
#include "sqxview/SqxViewReport.h"
#include "sqxview/SqxViewWatch.h"

/// The result of compiling a source. Copies share the shader, which never changes.
struct SqxViewCompiled {
    std::shared_ptr<const QxShader> shader;  // null if the report says why there is none
    std::string report;                      // messages of the compiler, including warnings
    std::vector<SqxViewExcerpt> excerpts;    // lines around the places that the report names
    std::string listing;                     // of the parameters, as `sqxdump --params` prints it
};

/// Options for compiling sources.
struct SqxViewCompileOptions {
    std::vector<std::string> words;    // of the compiler's command line
    std::vector<std::string> folders;  // searched for shadeop libraries
};

/// A source, which is watched together with the files that its compile has read. For use by one
/// thread at a time.
class SqxViewSource {
public:
    /// Starts to watch the file but does not compile it yet.
    SqxViewSource(std::string path, SqxViewCompileOptions options);

    [[nodiscard]] const std::string& Path() const { return m_path; }
    /// True if the source must be compiled: if no compile is complete yet, if the last one was
    /// stopped, or if a watched file has changed since the last one began. Asks the file system
    /// about the files.
    [[nodiscard]] bool HasChanged() const { return !m_isCompiled || m_watch.HasChanged(); }
    /// Compiles the source, and from then on watches the files that were read and the paths where
    /// headers were searched. If the source has errors, the compiler cannot be run, the shader
    /// cannot be opened, or there is no folder for temporary files, the report of the result says
    /// so. Returns nothing if the compile was stopped, because `isOver` returned true or a watched
    /// file changed meanwhile.
    [[nodiscard]] std::optional<SqxViewCompiled> Compile(const std::function<bool()>& isOver);

private:
    [[nodiscard]] std::filesystem::path WorkFolder();
    void WatchFor(const SqxViewCompiled& compiled, std::set<std::string> files,
                  const SqxViewWatch::Time& start);

    std::string m_path;
    SqxViewCompileOptions m_options;
    SqxViewWatch m_watch;
    std::unique_ptr<SqxScratchFolder> m_scratch;  // null before the first compile
    bool m_isCompiled = false;
};
