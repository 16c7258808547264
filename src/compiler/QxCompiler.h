#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// Compiles shaders from within a program. `docs/compiling.md` shows how.

class QxSourceIndex;

/// The options of a compile: those options of `shaderqx` that affect the shader.
struct QxCompileOptions {
    enum class Output {
        ByteCode,      // the contents of a `.sqx` file
        Cpp,           // C++ text, from which a C++ compiler makes a shared object
        Preprocessed,  // the source after preprocessing, as the parser reads it
        Nothing,       // only the checks
    };

    Output output = Output::ByteCode;
    int optimizationLevel = 2;      // -O0 to -O3
    bool checksArrayBounds = true;  // --no-array-check clears it; level 3 checks none
    bool isStrict = false;          // --strict
    bool usesShadeops = true;       // --dont-use-shadeops clears it
    bool isPreprocessed = false;    // the source is already preprocessed
    int warningLevel = 1;           // -w0 to -w2
    bool showsAdvice = false;       // at every warning level, as with SLC_ADVICE=1
    bool makesIndex = false;        // makes `index`, for editors; ignored if `isPreprocessed`
    /// Leaves the memory of the compile to the end of the process, which saves a tenth of the time:
    /// for a process that compiles once.
    bool keepsMemory = false;

    std::vector<std::string> folders;  // -I: for included files and, after ".", shadeop libraries
    std::vector<std::string> macros;   // -D: NAME or NAME=VALUE

    /// Returns the contents to use for a file, such as those in an editor, or nothing to read the
    /// file from disk. May be empty. Called on the compiling thread.
    std::function<std::optional<std::string>(const std::string& path)> readFile;
};

/// An error in a source, or a warning about it.
struct QxCompileReport {
    enum class Severity { Error, Warning };

    Severity severity = Severity::Error;
    int level = 0;     // for a warning: the lowest warning level that shows it
    std::string file;  // empty if the report has no place
    int line = 0;
    int column = 0;  // in bytes, from 1; 0 if only the line is known
    int length = 0;  // of the range at fault, in bytes
    std::string text;
    std::string advice;  // how to fix the fault; often empty
};

/// The result of a compile.
struct QxCompileResult {
    /// The kind of fault.
    enum class Failure {
        None,
        Preprocessing,  // fault found before parsing, or unreadable source
        Source,         // fault in the shader, or unwritable output
        OverlongToken,  // word or line of the source that exceeds a limit
        Compiler,       // fault of the compiler; the messages ask the user to report it
    };

    bool succeeded = false;
    Failure failure = Failure::None;
    std::string shaderName;  // empty if the source was rejected before it
    std::string fileName;    // derived from `shaderName`: NAME.sqx or NAME.cpp
    std::string output;      // empty after a failure, except that preprocessed text is partial

    std::vector<QxCompileReport> reports;  // in the order of reporting
    std::string messages;                  // the same reports, as the program prints them
    int errors = 0;    // in the shader, including those beyond the limit of reports
    int warnings = 0;  // likewise

    std::vector<std::string> files;             // the files that were read: source and includes
    std::vector<std::string> searchedPlaces;    // paths where included files were not found
    std::vector<std::string> shadeopLibraries;  // those whose functions the shader calls

    /// The meanings of the source's names (`compiler/QxSourceIndex.h`). Null unless `makesIndex` is
    /// set and `isPreprocessed` is not. For a source with faults, holds what could be determined.
    std::shared_ptr<const QxSourceIndex> index;
};

/// Compiles the source in the file `path`. Faults of the source or the file are returned in the
/// result: nothing is printed, no file is written, and only `std::bad_alloc` is thrown. For
/// preprocessed sources, reports name the files of their line markers.
///
/// Any number of threads may compile at the same time. A result depends only on source and options,
/// not on previous compiles, and no memory is retained unless `keepsMemory` is set. A thread needs
/// the stack of a main thread, 8 MB, for the deepest accepted nesting; with a smaller stack, deeply
/// nested sources are rejected.
[[nodiscard]] QxCompileResult QxCompileFile(const std::string& path,
                                            const QxCompileOptions& options = {});

/// Does the same for a text in memory. `path` names it in reports, and its folder is the first one
/// searched for included files.
[[nodiscard]] QxCompileResult QxCompileText(const std::string& path, std::string text,
                                            const QxCompileOptions& options = {});

/// Writes the output of a compile, byte-code or C++, as `fileName` into the folder, completely or
/// not at all. If that is not possible, the result becomes a failure with a report. Does nothing if
/// the compile failed.
void QxWriteOutput(QxCompileResult& result, const std::string& folder);
