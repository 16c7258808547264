#pragma once

#include "options/SqxOptionTable.h"

/// Returns the description of the program for `--help`, its manual page and completion.
[[nodiscard]] const SqxProgram& SqxLsProgram();
