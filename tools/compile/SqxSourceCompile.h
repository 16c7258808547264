#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "compile/SqxSearchedPlaces.h"

/// A compile that could not be done, for a reason that is not the source's. The text says why.
class SqxCompileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One run of the compiler on a source. All files that it leaves stand in a folder of its own, so
/// that compiles may go on side by side, also of one source.
///
/// Made, set up, run once, and then asked.
class SqxSourceCompile {
public:
    /// `options` are those of the compiler, as given; `work` is an empty folder, which the caller
    /// removes.
    SqxSourceCompile(std::filesystem::path source, std::vector<std::string> options,
                     std::filesystem::path work);

    /// In place of the compiler that stands beside this program.
    void SetCompiler(std::filesystem::path compiler) { m_compiler = std::move(compiler); }
    /// Writes also, in the syntax of makefiles, what `target` depends on: the same files.
    void WriteDependencies(std::filesystem::path file, std::string target);
    /// The compiler is ended, with all that it started, once the answer is true. It is asked every
    /// millisecond, in the thread that runs.
    void EndWhen(std::function<bool()> isOver) { m_isOver = std::move(isOver); }

    /// Gives the compiler's exit status, see `SqxRunCommand`; that of a source at fault is no error
    /// here. Throws `SqxCompileError` if the compiler cannot be run.
    [[nodiscard]] int Run();

    // After the run.

    /// What the compiler reported, on both streams: the source named as given, advice at every
    /// warning level, and reports of one variable folded, see `SqxFoldReports`.
    [[nodiscard]] std::string Messages() const;
    /// The compiled shader. Throws `SqxCompileError` if there is none.
    [[nodiscard]] std::filesystem::path Output() const;
    /// The source and all files that it includes, as the preprocessor names them, and the shadeop
    /// libraries that it calls into. Of a source that could not be preprocessed it is what came
    /// before the fault.
    [[nodiscard]] std::set<std::string> FilesRead() const;
    /// Where those were looked for before they were found.
    [[nodiscard]] SqxSearchedPlaces PlacesSearched() const;

private:
    [[nodiscard]] std::string PreprocessCommand() const;
    [[nodiscard]] std::string OwnPreprocessorWords() const;
    [[nodiscard]] std::vector<std::string> PreprocessorArguments() const;
    void CompleteDependencies() const;
    [[nodiscard]] std::set<std::string> Libraries() const;
    [[nodiscard]] std::vector<std::filesystem::path> SearchFolders() const;
    [[nodiscard]] std::vector<std::filesystem::path> LibraryFolders() const;

    std::filesystem::path m_source;
    std::vector<std::string> m_options;
    std::filesystem::path m_work;
    std::filesystem::path m_compiler;
    const char* m_ownCommand;              // the user's, in place of the default preprocess command
    std::filesystem::path m_dependencies;  // empty: not wanted
    std::string m_target;
    std::function<bool()> m_isOver;
};
