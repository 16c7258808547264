#pragma once

#include "sqxmake/SqxMakeOptions.h"

/// Compiles all that changed, by ninja, and prints the reports of the compiler as they come, and in
/// the end which sources were refused. Outputs of sources that are gone are removed. Gives the exit
/// status, 1 if a source was refused. Throws `SqxMakeError` if the build cannot be
/// done: no ninja, a folder that cannot be written, another build in the same folder.
[[nodiscard]] int SqxMakeBuild(const SqxMakeOptions& options);
