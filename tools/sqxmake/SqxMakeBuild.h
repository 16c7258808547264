#pragma once

#include "sqxmake/SqxMakeOptions.h"

/// Compiles all changed sources with ninja. Prints the reports on each source when it is compiled,
/// and at the end which sources had errors. Removes outputs of sources that no longer exist.
/// Returns the exit status, 0 only if all sources are compiled. An interrupt ends the process.
/// Throws `SqxMakeError` if the build cannot run, for example in a read-only folder or without
/// ninja.
[[nodiscard]] int SqxMakeBuild(const SqxMakeOptions& options);
