#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// Compiles shaders from within a program. `docs/compiling.md` shows how.

class QxSourceIndex;

/// The options of a compile: those options of `shaderqx` that affect the shader or the reports, and
/// some for programs that call the compiler.
struct QxCompileOptions {
    enum class Output {
        ByteCode,      // the contents of a `.sqx` file
        Cpp,           // C++ text, from which a C++ compiler makes a shared object
        Preprocessed,  // the source after preprocessing; it is not parsed
        Nothing,       // none: the compile ends after the checks
    };

    Output output = Output::ByteCode;
    int optimizationLevel = 2;      // -O0 to -O3
    bool checksArrayBounds = true;  // --no-array-check clears it; level 3 checks none
    bool isStrict = false;          // --strict
    bool usesShadeops = true;       // --dont-use-shadeops clears it
    bool isPreprocessed = false;    // the source is already preprocessed, and is not again
    int warningLevel = 1;           // -w0 to -w2
    bool showsAdvice = false;       // at every warning level, as with SLC_ADVICE=1, not only at 2
    bool makesIndex = false;        // makes `index`, for editors; ignored if `isPreprocessed`
    /// Leaves the memory of the compile to the end of the process, which saves a tenth of the time:
    /// for a process that compiles once.
    bool keepsMemory = false;

    std::vector<std::string> folders;  // -I: for included files and, after ".", shadeop libraries
    std::vector<std::string> macros;   // -D: NAME or NAME=VALUE

    /// Returns the contents to use for a file, such as those in an editor, or nothing to read the
    /// file from disk. Called on the compiling thread for each path at which the preprocessor looks
    /// for an included file, and for the source of `QxCompileFile`. May be empty.
    std::function<std::optional<std::string>(const std::string& path)> readFile;
};

/// An error or a warning: about the source, or about a file or the compile as a whole.
struct QxCompileReport {
    enum class Severity { Error, Warning };

    Severity severity = Severity::Error;
    int level = 0;     // for a warning: the lowest warning level that shows it
    std::string file;  // empty if the report has no place
    int line = 0;
    int column = 0;  // in bytes, from 1; 0 if only the line is known
    int length = 0;  // of the part of the line at fault, in bytes; 0 if the column is 0
    std::string text;
    std::string advice;  // how to fix the fault, in lines separated by "\n"; often empty
};

/// The result of a compile.
struct QxCompileResult {
    /// The kind of fault.
    enum class Failure {
        None,
        Preprocessing,  // fault found before parsing, or unreadable source
        Source,         // fault in the shader, or output file that cannot be completed
        OverlongToken,  // token or line of the source that exceeds a limit
        Compiler,       // fault of the compiler, which the messages ask the user to report, or
                        // output file that cannot be opened
    };

    bool succeeded = false;
    Failure failure = Failure::None;
    std::string shaderName;  // empty if no shader was parsed
    std::string fileName;    // `shaderName` with ".cpp" if the output is C++, else with ".sqx"
    std::string output;      // empty if the compile fails, except that preprocessed text is partial

    std::vector<QxCompileReport> reports;  // in the order of reporting
    std::string messages;                  // the text of all reports, as the program prints it
    int errors = 0;    // counted after preprocessing, also those beyond the limit of reports
    int warnings = 0;  // likewise

    // Empty for a source that is already preprocessed:
    std::vector<std::string> files;           // the files that were read: source and includes
    std::vector<std::string> searchedPlaces;  // paths where included files were not found

    std::vector<std::string> shadeopLibraries;  // of called functions; only with byte-code and C++

    /// The meanings of the source's names (`compiler/QxSourceIndex.h`). Null unless `makesIndex` is
    /// set and `isPreprocessed` is not. For a source with faults, it contains what could be
    /// determined.
    std::shared_ptr<const QxSourceIndex> index;
};

/// Compiles the source in the file `path`. Faults of the source or the file are returned in the
/// result: nothing is printed, no file is written, and only `std::bad_alloc` and exceptions of
/// `readFile` are thrown. For preprocessed sources, reports name the files of their line markers.
///
/// Any number of threads may compile at the same time. A result depends only on the source, the
/// files that it uses and the options, not on previous compiles. No memory is retained unless
/// `keepsMemory` is set. A thread needs the stack of a main thread, 8 MB, for the deepest accepted
/// nesting. With a smaller stack, deeply nested sources are rejected. A compile raises the
/// process's soft limit of the stack, if it is lower than what the deepest accepted nesting may
/// need.
[[nodiscard]] QxCompileResult QxCompileFile(const std::string& path,
                                            const QxCompileOptions& options = {});

/// Does the same for a text in memory. `path` names it in reports, and its folder is the first one
/// searched for files that are included with quotes.
[[nodiscard]] QxCompileResult QxCompileText(const std::string& path, std::string text,
                                            const QxCompileOptions& options = {});

/// Writes the output of a compile, byte-code or C++, as `fileName` into the folder, completely or
/// not at all. If that is not possible, the result becomes a failure with a report. Does nothing if
/// the compile failed. Do not call it for other outputs.
void QxWriteOutput(QxCompileResult& result, const std::string& folder);
