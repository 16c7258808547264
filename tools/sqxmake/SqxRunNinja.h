#pragma once

#include <filesystem>

#include "sqxmake/SqxMakeOptions.h"

/// Runs ninja on the file and prints the output of the steps, and on a terminal the progress.
/// Messages that start with ninja's name are not shown, except the reason of an error. Returns
/// ninja's exit status. From the call on, SIGINT does not end this process. Throws `SqxMakeError`
/// if ninja cannot be run.
[[nodiscard]] int SqxRunNinja(const SqxMakeOptions& options, const std::filesystem::path& file);

/// True if a status that `SqxRunNinja` returned means that the build was interrupted.
[[nodiscard]] bool SqxWasInterrupted(int status);
