#pragma once

#include "options/SqxOptionTable.h"

/// The name, usage and options of the program, for `--help` and its manual page.
[[nodiscard]] const SqxProgram& SqxViewProgram();
