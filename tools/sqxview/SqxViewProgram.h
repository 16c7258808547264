#pragma once

#include "options/SqxOptionTable.h"

/// How the program presents itself in its `--help` and its manual page.
[[nodiscard]] const SqxProgram& SqxViewProgram();
