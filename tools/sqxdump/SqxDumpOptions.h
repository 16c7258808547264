#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "options/SqxOptionTable.h"

/// Words on the command line that make no sense; the text says why.
class SqxDumpUsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What the command line of `sqxdump` asks for.
struct SqxDumpOptions {
    enum class Form { Code, Table, Json };

    std::vector<std::string> files;  // "-" stands for standard input
    Form form = Form::Code;
    std::string section;                  // of the code; empty: all
    std::vector<std::string> parameters;  // to list; none: all
    std::vector<std::string> shadeopFolders;
    bool help = false;
};

/// How the program presents itself.
[[nodiscard]] const SqxProgram& SqxDumpProgram();

/// Throws `SqxDumpUsageError`.
[[nodiscard]] SqxDumpOptions SqxReadDumpOptions(std::span<const char* const> arguments);
