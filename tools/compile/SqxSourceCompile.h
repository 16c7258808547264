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

/// Thrown if a compile cannot run or its results cannot be written or found, for a reason that is
/// not in the source. The text says why.
class SqxCompileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One compile of a source by the compiler library. All files that it writes are in a separate
/// folder, so that several compiles may run at a time, even of the same source.
///
/// Construct it, run it once, and then read the results.
class SqxSourceCompile {
public:
    /// `options` are those of the compiler, as given; `work` is an empty folder, which the caller
    /// removes.
    SqxSourceCompile(std::filesystem::path source, std::vector<std::string> options,
                     std::filesystem::path work);

    /// Compiles in this process. Other processes are started only for a user's preprocess command
    /// and for the C++ compiler of `--dso`. Returns true if there is an output. Throws
    /// `SqxCompileError` for an invalid option.
    [[nodiscard]] bool Run();
    /// As `Run`, in a separate process, so that this one survives a crash; `Messages` then reports
    /// an invalid option. `isOver` is called every millisecond; when it returns true, the process
    /// and all that it started are ended. Throws `SqxCompileError` if `sqxmake` cannot be started.
    [[nodiscard]] bool RunApart(const std::function<bool()>& isOver);
    /// Does the work of `RunApart` in the separate process: as `Run`, but also writes the results
    /// to the folder and prints the messages. Throws `SqxCompileError` also if the results cannot
    /// be written.
    [[nodiscard]] bool RunForAnother();

    // After the run.

    /// The reports of the compiler, with advice at all warning levels, and the output of the
    /// commands that it ran, folded by `SqxFoldReports`.
    [[nodiscard]] const std::string& Messages() const { return m_messages; }
    /// Returns the path of the compiled shader. Throws `SqxCompileError` if there is none.
    [[nodiscard]] std::filesystem::path Output() const;
    /// The source and all files that it includes, as the preprocessor names them, and the absolute
    /// paths of the shadeop libraries that it calls. After an error, those that were found before
    /// it. Empty if the process of `RunApart` was ended or crashed.
    [[nodiscard]] const std::set<std::string>& FilesRead() const { return m_files; }
    /// The paths that were searched before these files were found.
    [[nodiscard]] const SqxSearchedPlaces& PlacesSearched() const { return m_places; }

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
    const char* m_ownCommand;  // preprocess command of the user; null if the library preprocesses
    std::string m_messages;
    std::set<std::string> m_files;
    SqxSearchedPlaces m_places;
};
