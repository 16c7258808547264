#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "options/SqxOptionTable.h"
#include "options/SqxOptionWords.h"

/// Thrown if a build or a step cannot go on for a reason that is not in a shader. The program
/// prints the text and exits with status 1.
class SqxMakeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The options of the command line of `sqxmake`.
struct SqxMakeOptions {
    std::vector<std::string> inputs;           // sources and folders, as given
    std::vector<std::string> compilerOptions;  // as given, in their order
    std::filesystem::path outputFolder = ".";
    int jobs = 0;            // number of parallel compiles; 0 for ninja's default
    bool keepGoing = false;  // after sources with errors or shaders with the same name
    bool tree = false;       // mirrors the folders of the sources in the output folder
    SqxInformation information = SqxInformation::None;

    // True for a single step, see `SqxCompileStep`, that ninja or another build system runs.
    bool step = false;
    std::filesystem::path stamp;        // file that the step writes after a success
    std::filesystem::path stateFolder;  // also for builds, see `SqxMakeState`
    std::filesystem::path below;        // subfolder of the output folder for this shader

    std::filesystem::path compileFolder;  // for `SqxCompileForAnother`; empty if not requested
};

/// The description of the program, for its help, manual page and completion.
[[nodiscard]] const SqxProgram& SqxMakeProgram();

/// Reads the command line. `arguments` are the words after the name of the program. Throws
/// `SqxUsageError` for an unknown option, a missing or invalid value, no input, or several inputs
/// for one step.
[[nodiscard]] SqxMakeOptions SqxReadMakeOptions(const std::vector<std::string>& arguments);
