#pragma once

#include "options/SqxOptionTable.h"

/// How the compiler presents itself in its manual page; its `--help` has words of its own.
[[nodiscard]] const SqxProgram& ShaderqxProgram();
