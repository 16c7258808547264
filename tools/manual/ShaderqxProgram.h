#pragma once

#include "options/SqxOptionTable.h"

/// Returns the description of the compiler for its manual page and for completion. The compiler
/// itself writes its `--help`, from the same table of options.
[[nodiscard]] const SqxProgram& ShaderqxProgram();
