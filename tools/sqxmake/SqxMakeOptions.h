#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "options/SqxOptionTable.h"
#include "options/SqxOptionWords.h"

/// A build that cannot be done, for a reason that is not a shader's; the text says why. The program
/// prints it and ends with status 1.
class SqxMakeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What the command line of `sqxmake` asks for.
struct SqxMakeOptions {
    std::vector<std::string> inputs;           // sources and folders, as given
    std::vector<std::string> compilerOptions;  // as given, in their order
    std::filesystem::path outputFolder = ".";
    int jobs = 0;            // compiled at a time; 0: as many as ninja thinks good
    bool keepGoing = false;  // after faults
    bool tree = false;       // outputs are in the same tree of folders as their sources
    SqxInformation information = SqxInformation::None;

    // One step of a build, see `SqxCompileStep`: ninja, or another build system, asks for it.
    bool step = false;
    std::filesystem::path stamp;
    std::filesystem::path stateFolder;
    std::filesystem::path below;  // folder of the output folder for this shader

    std::filesystem::path compileFolder;  // see `SqxCompileForAnother`; empty: not asked for
};

/// How the program presents itself.
[[nodiscard]] const SqxProgram& SqxMakeProgram();

/// `arguments` are the words after the name of the program. Throws `SqxUsageError`.
[[nodiscard]] SqxMakeOptions SqxReadMakeOptions(const std::vector<std::string>& arguments);
