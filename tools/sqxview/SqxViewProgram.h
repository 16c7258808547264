#pragma once

#include "options/SqxOptionTable.h"

/// Returns the description of the program for its `--help`, its manual page and the completion of
/// its command line.
[[nodiscard]] const SqxProgram& SqxViewProgram();
