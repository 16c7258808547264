#pragma once

#include "options/SqxOptionTable.h"

/// Returns the description of the compiler for its manual page; its `--help` is worded differently.
[[nodiscard]] const SqxProgram& ShaderqxProgram();
