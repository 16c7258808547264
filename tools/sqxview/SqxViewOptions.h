#pragma once

#include <chrono>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "sqxshade/SqxShadeOptions.h"

/// A command line that makes no sense. The text is for the user.
class SqxViewUsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What the command line asks for.
struct SqxViewOptions {
    SqxShadeOptions shade;         // the shaders, and how the picture looks at first
    std::string warnings = "-w1";  // level of warnings, as the compiler takes it
    int port = 0;                  // 0: a free one
    bool open = false;             // the browser
    std::chrono::seconds timeLimit = std::chrono::seconds(10);  // of a picture
    bool help = false;
};

/// Throws `SqxViewUsageError`.
[[nodiscard]] SqxViewOptions SqxReadViewOptions(std::span<const char* const> arguments);
