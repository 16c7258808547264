#pragma once

#include <string>
#include <vector>

#include "options/SqxOptionTable.h"
#include "options/SqxOptionWords.h"

/// The options of the command line of `sqxdump`.
struct SqxDumpOptions {
    enum class Form { Code, Table, Json };

    std::vector<std::string> files;  // "-" is standard input
    Form form = Form::Code;
    std::string section;                  // section of the code to print; empty: all
    std::vector<std::string> parameters;  // names to list; empty: all
    std::vector<std::string> shadeopFolders;
    bool load = false;  // load shared objects that contain no facts, and libraries of shadeops
    SqxInformation information = SqxInformation::None;
};

/// The description of the program, for its help, manual page and completion.
[[nodiscard]] const SqxProgram& SqxDumpProgram();

/// Reads `arguments`, the words after the name of the program. Throws `SqxUsageError` for an
/// unknown option, an option without its value, no file, or a section together with a listing.
[[nodiscard]] SqxDumpOptions SqxReadDumpOptions(const std::vector<std::string>& arguments);
