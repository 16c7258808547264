#pragma once

#include <string>

#include "machine/run/QxMachineProgram.h"
#include "shaders/RunShader.h"

inline constexpr QxGrid k_smallGrid = {3, 2};

/// Runs byte-code in a scene with some spaces.
[[nodiscard]] RunOutcome RunByteCode(const std::string& byteCode);

/// Runs a shared object with the same grid, spaces, lights and answers, and gives the outputs that
/// the byte-code of the same shader gave.
[[nodiscard]] RunOutcome RunShared(const std::string& path, const RunOutcome& byteCode,
                                   const QxGrid& layout = k_smallGrid);

/// The same for byte-code in the machine.
[[nodiscard]] RunOutcome RunMachine(const std::string& text, QxKernelChoice kernels,
                                    const RunOutcome& byteCode, const QxGrid& layout = k_smallGrid);

/// Where two outcomes differ by one bit; empty if they do not. What is no number is one value.
[[nodiscard]] std::string BitDifference(const RunOutcome& first, const RunOutcome& second);
