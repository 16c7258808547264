#pragma once

#include "sqxmake/SqxMakeOptions.h"

/// Compiles all changed sources, by ninja. Prints the reports of the compiler at once, and at the
/// end which sources had errors. Removes outputs of sources that no longer exist. Returns the exit
/// status, 1 if a source had errors. Throws `SqxMakeError` if the build cannot
/// run: no ninja, a folder that cannot be written, another build in the same folder.
[[nodiscard]] int SqxMakeBuild(const SqxMakeOptions& options);
