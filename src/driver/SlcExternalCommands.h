#pragma once

#include "driver/SlcCommandLine.h"

/// The stages that the shell runs. A command learns the file names from environment variables of
/// this process, so that a user's own command can use or ignore them.

/// Makes the preprocessed file from the source. True if the command returned 0; if not, that has
/// been reported, and what the command wrote stays.
[[nodiscard]] bool PreprocessSource(const SlcCommandLine& line);

/// Makes the shared object from the C++ file that the back end wrote in the working directory.
/// That file goes away unless it is to be kept. True if the command returned 0; if not, that has
/// been reported.
[[nodiscard]] bool BuildSharedObject(const SlcCommandLine& line);
