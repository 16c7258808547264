#pragma once

#include <filesystem>

#include "sqxmake/SqxMakeOptions.h"

/// Runs ninja on the file and prints what the steps print; on a terminal also how far it is.
/// Ninja's own words are not shown, but for the reason of an error. Returns its exit status. SIGINT
/// does not end this process any more. Throws `SqxMakeError` if ninja cannot be run.
[[nodiscard]] int SqxRunNinja(const SqxMakeOptions& options, const std::filesystem::path& file);

/// `status`: what the above returned.
[[nodiscard]] bool SqxWasInterrupted(int status);
