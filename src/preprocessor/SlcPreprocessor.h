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

/// The options of one run of the preprocessor.
struct SlcPreprocessorOptions {
    /// A macro that the command line defines or undefines.
    struct Macro {
        std::string text;  // NAME, NAME=VALUE or NAME(PARAMETERS)=VALUE; NAME alone means NAME=1
        bool isDefined = true;
    };

    std::vector<Macro> macros;            // in the order of the command line
    std::vector<std::string> folders;     // for included files, in order
    SlcIncludedFiles::Provider provider;  // asked before a file on disk is read; may be empty
    std::function<void(const SlcPreprocessorReport&)> report;  // may be empty
    SlcPreprocessorTrace* trace = nullptr;                     // of this run only; may be null
};

/// The result of a run.
struct SlcPreprocessed {
    bool succeeded = false;                // no error was reported
    std::string text;                      // with line markers; can be incomplete after errors
    std::vector<SlcColumnChange> columns;  // relate columns of the text to those of the files
    std::vector<std::string> files;        // the files that were read, the source first
    std::set<std::string> missing;         // paths where a file was looked for and not found
};

/// The C preprocessor (C99 6.10) for sources that are not C: text that is not a token of C is
/// passed through. In addition to the standard it supports `#warning`, `#ident`, `#sccs`,
/// `#pragma once`, `, ## __VA_ARGS__`, named variadic parameters, and the macros `__BASE_FILE__`,
/// `__INCLUDE_LEVEL__` and `__COUNTER__`. Time and memory are linear in the source and the files
/// that it includes; a source that would need more is rejected with a report.
///
/// Reports faults, such as a source that cannot be read, to `options.report`. Keeps no state
/// between runs, so any number of runs may be active at once.
[[nodiscard]] SlcPreprocessed SlcPreprocess(const std::string& path,
                                            const SlcPreprocessorOptions& options);
/// Does the same for a text in memory, which stands for the contents of the file `path`.
[[nodiscard]] SlcPreprocessed SlcPreprocessText(const std::string& path, std::string text,
                                                const SlcPreprocessorOptions& options);
