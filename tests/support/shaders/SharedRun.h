#pragma once

#include <string>

#include "machine/run/QxMachineProgram.h"
#include "shaders/RunShader.h"

inline constexpr QxGrid k_smallGrid = {3, 2};

/// Runs byte-code in the machine of the tests, with fixed spaces and two lights. Leaves out L, Cl
/// and Ol, except for light shaders.
[[nodiscard]] RunOutcome RunByteCode(const std::string& byteCode);

/// Runs a shared object with the same spaces, lights and answers, and on the same grid unless
/// `layout` is given. Returns the outputs that are in `byteCode`, the outcome of the same shader in
/// byte-code.
[[nodiscard]] RunOutcome RunShared(const std::string& path, const RunOutcome& byteCode,
                                   const QxGrid& layout = k_smallGrid);

/// Does the same for byte-code in the machine of the product.
[[nodiscard]] RunOutcome RunMachine(const std::string& text, QxKernelChoice kernels,
                                    const RunOutcome& byteCode, const QxGrid& layout = k_smallGrid);

/// Returns where two outcomes differ, without a tolerance; empty if nowhere. All NaNs are equal,
/// and so are both zeros.
[[nodiscard]] std::string BitDifference(const RunOutcome& first, const RunOutcome& second);
