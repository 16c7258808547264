#pragma once

#include <string>
#include <vector>

#include "options/SqxOptionTable.h"
#include "options/SqxOptionWords.h"
#include "preprocessor/SlcPreprocessor.h"

/// What the command line of `sqxcpp` asks for.
struct SqxCppOptions {
    /// A rule for makefiles that names the files that were read.
    enum class Rule {
        None,
        Alone,   // in place of the text
        Beside,  // in a separate file
    };

    SlcPreprocessorOptions preprocessor;  // without a report function
    std::string source;                   // "-" is standard input
    std::string output;                   // empty: standard output
    Rule rule = Rule::None;
    std::string ruleFile;              // empty: standard output, or a name made of the source's
    std::vector<std::string> targets;  // as written in the rule; none: made of the source's name
    int warningLevel = 1;
    SqxInformation information = SqxInformation::None;
};

/// The program as its help and its manual page show it.
[[nodiscard]] const SqxProgram& SqxCppProgram();

/// Throws `SqxUsageError`.
[[nodiscard]] SqxCppOptions SqxReadCppOptions(const std::vector<std::string>& arguments);
