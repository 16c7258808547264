#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "compiler/QxCompiler.h"

/// The decisions of the command line and the environment: the stages to run, the files, the
/// commands, and the options for the compiler's library.
struct SlcCommandLine {
    QxCompileOptions m_compile;
    std::string m_inputFile;         // as given; empty if none was
    std::string m_preprocessedFile;  // next to the source, with the extension ".i"
    std::string m_outputDirectory = ".";
    std::vector<std::string> m_preprocessorArguments;  // every -I and -D as given
    std::optional<std::string> m_preprocessCommand;    // for the shell; empty: use the library
    std::string m_ccCommand;                           // for the shell
    std::string m_librariesFile;  // file for the paths of shadeop libraries; empty: none
    bool m_runCompile = true;
    bool m_runCCBuild = true;  // only after the C++ back end
    bool m_keepPreprocessedFile = false;
    bool m_keepCCFile = true;

    /// Returns the arguments for the preprocessor, each followed by a blank.
    [[nodiscard]] std::string PreprocessorOptions() const;
};

/// Reads the arguments after the program's name, in order, so that later ones override earlier
/// ones, and then the environment. Prints the usage or version if the only argument requests it.
/// False if the program must end with status 1: a fault has been reported, or the requested
/// information has been printed.
[[nodiscard]] bool ParseOptions(std::span<const char* const> arguments, SlcCommandLine& line);

/// Writes the description of the options to standard output.
void PrintUsage();
