#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// Compiles shaders within a program. `docs/compiling.md` shows how.

class QxSourceIndex;

/// The request for a compile; the fields are those options of `shaderqx` that change a shader.
struct QxCompileOptions {
    enum class Output {
        ByteCode,      // the contents of a `.sqx` file
        Cpp,           // C++ text, from which a C++ compiler makes a shared object
        Preprocessed,  // the source without directives, as the parser reads it
        Nothing,       // the checks alone
    };

    Output output = Output::ByteCode;
    int optimizationLevel = 2;      // -O0 to -O3
    bool checksArrayBounds = true;  // --no-array-check clears it; level 3 checks none
    bool isStrict = false;          // --strict
    bool usesShadeops = true;       // --dont-use-shadeops clears it
    bool isPreprocessed = false;    // the source has been through a preprocessor
    int warningLevel = 1;           // -w0 to -w2
    bool showsAdvice = false;       // at every warning level, as with SLC_ADVICE=1
    bool makesIndex = false;        // of the names in the source, for editors; not if preprocessed

    std::vector<std::string> folders;  // -I: of included files, and after "." of shadeop libraries
    std::vector<std::string> macros;   // -D: NAME or NAME=VALUE

    /// The contents of a file as it shall be read, such as one that an editor holds, or nothing for
    /// one that is read from the disk. May be empty. Called in the thread that compiles.
    std::function<std::optional<std::string>(const std::string& path)> readFile;
};

/// A fault in a source, or what the compiler remarks on it.
struct QxCompileReport {
    enum class Severity { Error, Warning };

    Severity severity = Severity::Error;
    int level = 0;     // of a warning: the least warning level that shows it
    std::string file;  // empty if the report belongs to no place
    int line = 0;
    int column = 0;  // in bytes, from 1; 0 if only the line is known
    int length = 0;  // of the place, in bytes
    std::string text;
    std::string advice;  // what may have been meant; often empty
};

/// The outcome of a compile.
struct QxCompileResult {
    /// The kind of fault.
    enum class Failure {
        None,
        Preprocessing,  // the source, before it was parsed; or it could not be read
        Source,         // the shader; or its output could not be written
        OverlongToken,  // the source, which has a word or a line that is too long to go on
        Compiler,       // the compiler itself: the messages ask to report it
    };

    bool succeeded = false;
    Failure failure = Failure::None;
    std::string shaderName;  // empty if the source was refused before it
    std::string fileName;    // made of it: NAME.sqx or NAME.cpp
    std::string output;      // empty after a failure, but as far as it came if only preprocessed

    std::vector<QxCompileReport> reports;  // in the order in which they were made
    std::string messages;                  // the same, in the words and the form of the program
    int errors = 0;    // in the shader; with those that are too many to be reported
    int warnings = 0;  // likewise

    std::vector<std::string> files;             // that were read: the source and what it includes
    std::vector<std::string> searchedPlaces;    // where included files were looked for in vain
    std::vector<std::string> shadeopLibraries;  // whose functions the shader calls

    /// The meanings of the source's names; `compiler/QxSourceIndex.h` defines it. Null unless
    /// `makesIndex` asks for it; of a source with faults it holds what could be read.
    std::shared_ptr<const QxSourceIndex> index;
};

/// Compiles the source in the file `path`. What is wrong with it, or with the file, is in the
/// result: nothing is thrown but `std::bad_alloc`, nothing is printed, and no file is written.
/// Line markers of a source that is preprocessed name the files of its reports.
///
/// Any number of threads may compile at a time. A result depends on source and options alone, not
/// on what was compiled before, and no memory is kept. A thread needs the stack of a main thread, 8
/// MB, for the deepest nesting that is accepted; with less, sources that are nested deeply are
/// refused.
[[nodiscard]] QxCompileResult QxCompileFile(const std::string& path,
                                            const QxCompileOptions& options = {});

/// The same of a text in memory. `path` names it in reports, and its folder is searched first for
/// what it includes.
[[nodiscard]] QxCompileResult QxCompileText(const std::string& path, std::string text,
                                            const QxCompileOptions& options = {});

/// Writes byte-code or C++ into the folder under its file name: whole, or not at all. If that is
/// not possible, the result becomes a failure that is reported in it.
void QxWriteOutput(QxCompileResult& result, const std::string& folder);
