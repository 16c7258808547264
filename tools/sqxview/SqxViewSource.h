#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/QxShader.h"
#include "sqxview/SqxViewReport.h"
#include "sqxview/SqxViewWatch.h"

/// The result of compiling a source. Copies share the shader, which never changes.
struct SqxViewCompiled {
    std::shared_ptr<const QxShader> shader;  // none: the source was refused
    std::string report;                      // what the compiler said, warnings too
    std::vector<SqxViewExcerpt> excerpts;    // the places of the report
    std::string listing;                     // of the parameters
};

/// How sources are compiled: as sqxshade does it, or at another level.
struct SqxViewCompileOptions {
    std::vector<std::string> words;    // for the compiler
    std::vector<std::string> folders;  // for shadeop libraries
};

/// A source that is compiled again once it, or a file that it includes, changes. For one thread.
class SqxViewSource {
public:
    /// Looks at the file, but does not compile it yet.
    SqxViewSource(std::string path, SqxViewCompileOptions options);

    [[nodiscard]] const std::string& Path() const { return m_path; }
    /// True before the first compile, and if the last one has seen older files: then it is time to
    /// compile. Costs a look at each file.
    [[nodiscard]] bool HasChanged() const { return !m_isCompiled || m_watch.HasChanged(); }
    /// Compiles, and watches the files that were read. A refused source is a result too, and so is
    /// a compiler that cannot be run: its report says so. Nothing if the compile was ended, because
    /// `isOver` returned true or the files changed in the meantime. Throws `std::runtime_error` if
    /// there is no place for temporary files.
    [[nodiscard]] std::optional<SqxViewCompiled> Compile(const std::function<bool()>& isOver);

private:
    void WatchFor(const SqxViewCompiled& compiled, std::set<std::string> files);

    std::string m_path;
    SqxViewCompileOptions m_options;
    SqxViewWatch m_watch;
    bool m_isCompiled = false;
};
