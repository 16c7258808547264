#pragma once

#include "sqxmake/SqxMakeOptions.h"

/// Compiles with ninja all sources that changed, or for which something that they depend on did.
/// Prints the reports on each source when it is compiled, except known errors of a source that has
/// not changed, and at the end which sources had errors. Removes outputs of sources that no longer
/// exist. Sources whose shaders have the same name are reported and left out; without `-k`, nothing
/// is compiled then. Returns the exit status, 0 only if all sources are compiled. After an
/// interrupt, prints the result and ends the process. Throws `SqxMakeError` if the build cannot
/// run, for example in a read-only folder or without ninja.
[[nodiscard]] int SqxMakeBuild(const SqxMakeOptions& options);
