#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "compile/SqxSearchedPlaces.h"

struct QxCompileResult;
struct SlcCommandLine;

/// A compile that could not be done, for a reason that is not the source's. The text says why.
class SqxCompileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One compile of a source by the library. All files that it leaves are in a separate folder, so
/// that compiles may run side by side, also of one source.
///
/// Made, set up, run once, and then asked.
class SqxSourceCompile {
public:
    /// `options` are those of the compiler, as given; `work` is an empty folder, which the caller
    /// removes.
    SqxSourceCompile(std::filesystem::path source, std::vector<std::string> options,
                     std::filesystem::path work);

    /// Compiles in this process. Others are started only for a preprocess command of the user's
    /// and for the C++ compiler of `--dso`. True if there is an output. Throws `SqxCompileError`.
    [[nodiscard]] bool Run();
    /// The same in a separate process, so that this one survives a crash. The process is ended,
    /// with all that it started, once `isOver` returns true; it is called every millisecond.
    [[nodiscard]] bool RunApart(const std::function<bool()>& isOver);
    /// Run in the separate process: leaves the facts in the folder, and prints the messages.
    [[nodiscard]] bool RunForAnother();

    // After the run.

    /// The compiler's reports: advice at every warning level, and reports of one variable folded,
    /// see `SqxFoldReports`.
    [[nodiscard]] const std::string& Messages() const { return m_messages; }
    /// The compiled shader. Throws `SqxCompileError` if there is none.
    [[nodiscard]] std::filesystem::path Output() const;
    /// The source and all files that it includes, as the preprocessor names them, and the shadeop
    /// libraries that it calls into. Of a source that could not be preprocessed it is what came
    /// before the fault.
    [[nodiscard]] const std::set<std::string>& FilesRead() const { return m_files; }
    /// The places that were searched before those were found.
    [[nodiscard]] const SqxSearchedPlaces& PlacesSearched() const { return m_places; }
    /// Writes, in the syntax of makefiles, that `target` depends on these files.
    void WriteDependencies(const std::filesystem::path& file, const std::string& target) const;

private:
    [[nodiscard]] SlcCommandLine CommandLine() const;
    [[nodiscard]] QxCompileResult Compile(const SlcCommandLine& line);
    [[nodiscard]] bool Preprocess(const SlcCommandLine& line);
    [[nodiscard]] bool BuildSharedObject(const QxCompileResult& result);
    void TakeFacts(const SlcCommandLine& line, const QxCompileResult& result);
    void AddMessage(const std::string& text);

    std::filesystem::path m_source;
    std::vector<std::string> m_options;
    std::filesystem::path m_work;
    const char* m_ownCommand;  // the user's, in place of the library's preprocessor
    std::string m_messages;
    std::set<std::string> m_files;
    SqxSearchedPlaces m_places;
};
