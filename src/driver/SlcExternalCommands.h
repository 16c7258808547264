#pragma once

#include "driver/SlcCommandLine.h"
#include "driver/SlcRunFiles.h"

/// The stages that other programs can do, run by the shell. A command gets the file names through
/// environment variables of this process, so that a user's own command can use or ignore them.
/// Ctrl-C while it runs ends this process too, by the same signal.

/// Makes the preprocessed text or file from the source: by the user's command if there is one, and
/// else by the library. True if that succeeded; if not, that has been reported, and what was
/// written is moved into its place.
[[nodiscard]] bool PreprocessSource(const SlcCommandLine& line, SlcRunFiles& files);

/// After a failure, puts the text that the library made where a command would have left its file,
/// if that is possible: the failure has been reported.
void KeepPreprocessedText(const SlcCommandLine& line, SlcRunFiles& files);

/// Makes the shared object from the C++ file, and then moves that into its place if it is to be
/// kept. True if the command returned 0; if not, that has been reported.
[[nodiscard]] bool BuildSharedObject(const SlcCommandLine& line, SlcRunFiles& files);

/// Moves the file into its place, `place`. If that fails it is reported, and the result is false.
[[nodiscard]] bool KeepFile(SlcUnfinishedFile& file, const std::string& place);
