#pragma once

#include "driver/SlcRunFiles.h"

/// The stages that the shell runs. A command gets the file names through environment variables of
/// this process, so that a user's own command can use or ignore them. Ctrl-C while it runs ends
/// this process too, by the same signal.

/// Makes the preprocessed file from the source. True if the command returned 0; if not, that has
/// been reported, and what the command wrote is moved into its place.
[[nodiscard]] bool PreprocessSource(const SlcCommandLine& line, SlcRunFiles& files);

/// Makes the shared object from the C++ file, and then moves that into its place if it is to be
/// kept. True if the command returned 0; if not, that has been reported.
[[nodiscard]] bool BuildSharedObject(const SlcCommandLine& line, SlcRunFiles& files);

/// Moves the file into its place, `place`. If that fails it is reported, and the result is false.
[[nodiscard]] bool KeepFile(SlcUnfinishedFile& file, const std::string& place);
