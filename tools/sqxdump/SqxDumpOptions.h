#pragma once

#include <string>
#include <vector>

#include "options/SqxOptionTable.h"
#include "options/SqxOptionWords.h"

/// What the command line of `sqxdump` asks for.
struct SqxDumpOptions {
    enum class Form { Code, Table, Json };

    std::vector<std::string> files;  // "-" is standard input
    Form form = Form::Code;
    std::string section;                  // of the code; empty: all
    std::vector<std::string> parameters;  // to list; none: all
    std::vector<std::string> shadeopFolders;
    bool load = false;  // shared objects that do not say what they hold
    SqxInformation information = SqxInformation::None;
};

/// How the program presents itself.
[[nodiscard]] const SqxProgram& SqxDumpProgram();

/// `arguments` are the words after the name of the program. Throws `SqxUsageError`.
[[nodiscard]] SqxDumpOptions SqxReadDumpOptions(const std::vector<std::string>& arguments);
