#pragma once

#include "options/SqxOptionTable.h"

/// How the program presents itself.
[[nodiscard]] const SqxProgram& SqxLsProgram();
