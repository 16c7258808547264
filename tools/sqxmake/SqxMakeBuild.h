#pragma once

#include "sqxmake/SqxMakeOptions.h"

/// Compiles all changed sources with ninja. Prints the reports of the compiler at once, and at the
/// end which sources had errors. Removes outputs of sources that no longer exist. Returns the exit
/// status, 1 if a source had errors or two sources have the same output. Throws `SqxMakeError` if
/// the build cannot run: no ninja, a read-only folder, another build in the same folder.
[[nodiscard]] int SqxMakeBuild(const SqxMakeOptions& options);
