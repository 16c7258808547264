#pragma once

#include "options/SqxOptionTable.h"

/// How the compiler presents itself in its manual page; its `--help` has other words.
[[nodiscard]] const SqxProgram& ShaderqxProgram();
