#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "sqxshade/SqxShadeOptions.h"

/// What the command line asks for.
struct SqxViewOptions {
    SqxShadeOptions shade;         // the shaders, and how the picture looks at first
    std::string warnings = "-w1";  // level of warnings, as the compiler takes it
    int port = 0;                  // 0: a free one
    bool open = false;             // the browser
    std::chrono::seconds timeLimit = std::chrono::seconds(10);  // of a picture
    SqxInformation information = SqxInformation::None;
};

/// `arguments` are the words after the name of the program. Throws `SqxUsageError`, also for a
/// shader that is no source.
[[nodiscard]] SqxViewOptions SqxReadViewOptions(const std::vector<std::string>& arguments);
