#pragma once

#include <cstdlib>
#include <string>

#include "helpers/CheckedShader.h"
#include "shaders/SharedRun.h"

// Functions that the tests of random shaders share.

/// Returns a number from the environment, or `otherwise`.
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

/// Runs byte-code on a grid of one point, where a condition holds everywhere or nowhere.
inline RunOutcome RunAtOnePoint(const std::string& byteCode, const RunOutcome& model)
{
    return RunMachine(byteCode, QxKernelChoice::Best, model, {1, 1});
}

/// Returns where the values of the product's machine differ from those of the machine of the tests,
/// or where the bits of its two sets of kernels differ; empty if nowhere, or if `expected` is a
/// fault.
inline std::string MachineDifference(const std::string& byteCode, const RunOutcome& expected)
{
    if (!expected.fault.empty())
        return {};
    const RunOutcome baseline = RunMachine(byteCode, QxKernelChoice::Baseline, expected);
    std::string difference = Difference(baseline, expected);
    if (difference.empty())
        difference = BitDifference(baseline, RunMachine(byteCode, QxKernelChoice::Best, expected));
    return difference.empty() ? difference : "machine of the product: " + difference;
}
