#pragma once

#include <cstdlib>
#include <string>

#include "helpers/CheckedShader.h"
#include "run/RunShader.h"

// What tests of random shaders share.

/// A number that the environment may give.
inline unsigned int Setting(const char* name, unsigned int otherwise)
{
    const char* text = std::getenv(name);
    return text ? static_cast<unsigned int>(std::strtoul(text, nullptr, 10)) : otherwise;
}

inline bool IsAccepted(const std::string& source)
{
    SlcOptionsControl options;
    return CheckedShader(source, options).IsAccepted();
}

inline RunOutcome RunByteCode(const std::string& byteCode)
{
    SqxMachine machine;
    machine.SetStepLimit(2000000);
    return RunShader(machine, byteCode);
}
