#pragma once

#include "options/SqxOptionTable.h"

/// Returns the description of the compiler for its manual page and for completion. The texts of its
/// `--help` are in the compiler.
[[nodiscard]] const SqxProgram& ShaderqxProgram();
