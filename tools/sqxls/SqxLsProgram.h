#pragma once

#include "options/SqxOptionTable.h"

/// The name, usage and options of the program.
[[nodiscard]] const SqxProgram& SqxLsProgram();
