#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "sqxshade/SqxShadeOptions.h"

/// The options of the command line.
struct SqxViewOptions {
    SqxShadeOptions shade;         // the shaders, how to compile them, and the initial settings
    std::string warnings = "-w1";  // level of warnings, as an option of the compiler
    int port = 0;                  // 0 for any free port
    bool open = false;             // open the browser
    std::chrono::seconds timeLimit = std::chrono::seconds(10);  // for a picture
    SqxInformation information = SqxInformation::None;
};

/// Reads the command line. `arguments` are the words after the name of the program. Throws
/// `SqxUsageError` for an invalid option or value, if no shader is given, and for a shader that is
/// not a source.
[[nodiscard]] SqxViewOptions SqxReadViewOptions(const std::vector<std::string>& arguments);
