#pragma once

#include <string>

#include "run/RunShader.h"

/// Runs byte-code in a scene with some spaces.
[[nodiscard]] RunOutcome RunByteCode(const std::string& byteCode);

/// Runs a shared object with the same grid, spaces, lights and answers, and gives the outputs that
/// the byte-code of the same shader gave.
[[nodiscard]] RunOutcome RunShared(const std::string& path, const RunOutcome& byteCode);
