#pragma once

#include <string>
#include <vector>

#include "options/SqxOptionTable.h"
#include "options/SqxOptionWords.h"
#include "preprocessor/SlcPreprocessor.h"

/// The options of the command line of `sqxcpp`.
struct SqxCppOptions {
    /// Where the makefile rule is written that lists the files that were read.
    enum class Rule {
        None,
        Alone,   // in place of the text
        Beside,  // in a separate file; the text is written too
    };

    SlcPreprocessorOptions preprocessor;  // without a report function
    std::string source;                   // "-" is standard input
    std::string output;                   // empty: standard output
    Rule rule = Rule::None;
    std::string ruleFile;              // empty: `output`, or for `Beside` SOURCE.d
    std::vector<std::string> targets;  // as written in the rule; empty: SOURCE.sqx
    int warningLevel = 1;
    SqxInformation information = SqxInformation::None;
};

/// Returns the name, usage and options of the program.
[[nodiscard]] const SqxProgram& SqxCppProgram();

/// Reads the words after the name of the program. Throws `SqxUsageError` if they are invalid, or if
/// no source is given and neither the help nor the version is requested.
[[nodiscard]] SqxCppOptions SqxReadCppOptions(const std::vector<std::string>& arguments);
