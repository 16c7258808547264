#pragma once

#include "options/SqxOptionTable.h"

/// The description of the compiler for its manual page; its `--help` has other words.
[[nodiscard]] const SqxProgram& ShaderqxProgram();
