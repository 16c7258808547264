#pragma once

#include "driver/SlcCommandLine.h"
#include "driver/SlcRunFiles.h"

/// The stages that other programs can perform, run by the shell. Commands get the file names in
/// environment variables, which a user's own command can use or ignore. Ctrl-C during a command
/// also ends this process, by the same signal.

/// Makes the preprocessed text or file from the source, by the user's command if there is one,
/// otherwise by the library. True on success; otherwise the fault has been reported, and the output
/// so far is moved into place.
[[nodiscard]] bool PreprocessSource(const SlcCommandLine& line, SlcRunFiles& files);

/// After a failure, writes the library's preprocessed text where a command would have left its
/// file. Ignores write errors, since the failure has been reported.
void KeepPreprocessedText(const SlcCommandLine& line, SlcRunFiles& files);

/// Makes the shared object from the C++ file, and then moves that file into place if it is kept.
/// True if the command returned 0 and the files are in place; otherwise the fault has been
/// reported.
[[nodiscard]] bool BuildSharedObject(const SlcCommandLine& line, SlcRunFiles& files);

/// Moves the file to `place`. False after a reported failure.
[[nodiscard]] bool KeepFile(SlcUnfinishedFile& file, const std::string& place);
