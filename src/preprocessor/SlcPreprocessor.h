#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "preprocessor/SlcIncludedFiles.h"
#include "preprocessor/SlcPreprocessedText.h"
#include "preprocessor/SlcPreprocessorReport.h"
#include "preprocessor/SlcPreprocessorTrace.h"

/// The request for a run of the preprocessor.
struct SlcPreprocessorOptions {
    /// A macro that the command line defines or undefines, in the order of its words.
    struct Macro {
        std::string text;  // NAME, NAME=VALUE or NAME(PARAMETERS)=VALUE; NAME alone is 1
        bool isDefined = true;
    };

    std::vector<Macro> macros;
    std::vector<std::string> folders;     // for included files, in order
    SlcIncludedFiles::Provider provider;  // asked before the disk; may be empty
    std::function<void(const SlcPreprocessorReport&)> report;  // may be empty
    SlcPreprocessorTrace* trace = nullptr;                     // of this run alone; may be null
};

/// The result of a run.
struct SlcPreprocessed {
    bool succeeded = false;                // no error was reported
    std::string text;                      // with line markers; of a failed run as far as it came
    std::vector<SlcColumnChange> columns;  // where those of the text are not the file's
    std::vector<std::string> files;        // read, the source first
    std::set<std::string> missing;         // places where included files were looked for in vain
};

/// The C preprocessor (C99 6.10) for sources that are not C: what is no token of C passes through.
/// Beside the standard it knows `#warning`, `#ident`, `#pragma once`, `, ## __VA_ARGS__` and named
/// lists of arguments. The work and the memory are linear in the source and the files that it
/// includes; what would need more is reported.
///
/// Keeps nothing from one run to the next; any number may go on at a time.
[[nodiscard]] SlcPreprocessed SlcPreprocess(const std::string& path,
                                            const SlcPreprocessorOptions& options);
/// The same of a text in memory, which is taken for the contents of the file `path`.
[[nodiscard]] SlcPreprocessed SlcPreprocessText(const std::string& path, std::string text,
                                                const SlcPreprocessorOptions& options);
