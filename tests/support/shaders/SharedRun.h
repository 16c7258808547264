#pragma once

#include <string>

#include "machine/run/QxMachineProgram.h"
#include "shaders/RunShader.h"

inline constexpr QxGrid k_smallGrid = {3, 2};

/// Runs byte-code in a scene with some spaces.
[[nodiscard]] RunOutcome RunByteCode(const std::string& byteCode);

/// Runs a shared object with the same grid, spaces, lights and answers, and returns the outputs
/// that the byte-code of the same shader had.
[[nodiscard]] RunOutcome RunShared(const std::string& path, const RunOutcome& byteCode,
                                   const QxGrid& layout = k_smallGrid);

/// Does the same for byte-code in the machine of the product.
[[nodiscard]] RunOutcome RunMachine(const std::string& text, QxKernelChoice kernels,
                                    const RunOutcome& byteCode, const QxGrid& layout = k_smallGrid);

/// Returns where two outcomes differ by one bit; empty if they do not. All NaNs are equal.
[[nodiscard]] std::string BitDifference(const RunOutcome& first, const RunOutcome& second);
