#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "options/SqxOptionTable.h"
#include "options/SqxOptionWords.h"

/// A build cannot run, for a reason that is not in a shader. The program prints the text and exits
/// with status 1.
class SqxMakeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The options of the command line of `sqxmake`.
struct SqxMakeOptions {
    std::vector<std::string> inputs;           // sources and folders, as given
    std::vector<std::string> compilerOptions;  // as given, in their order
    std::filesystem::path outputFolder = ".";
    int jobs = 0;            // number of parallel compiles; 0: ninja's default
    bool keepGoing = false;  // after sources with errors
    bool tree = false;       // mirrors the folders of the sources in the output folder
    SqxInformation information = SqxInformation::None;

    // A single step of a build, see `SqxCompileStep`, that ninja or another build system runs.
    bool step = false;
    std::filesystem::path stamp;
    std::filesystem::path stateFolder;
    std::filesystem::path below;  // subfolder of the output folder for this shader

    std::filesystem::path compileFolder;  // see `SqxCompileForAnother`; empty: not requested
};

/// The name, usage and options of the program.
[[nodiscard]] const SqxProgram& SqxMakeProgram();

/// `arguments` are the words after the name of the program. Throws `SqxUsageError`.
[[nodiscard]] SqxMakeOptions SqxReadMakeOptions(const std::vector<std::string>& arguments);
