#pragma once

#include "sqxmake/SqxMakeOptions.h"

/// Compiles all that changed, by ninja, and tells how it went. Gives the exit status; throws
/// `SqxMakeError`.
[[nodiscard]] int SqxMakeBuild(const SqxMakeOptions& options);
