#pragma once

#include "driver/SlcCommandLine.h"
#include "driver/SlcRunFiles.h"

/// The stages that shell commands can perform: preprocessing and the C++ compiler. Commands get the
/// file names in environment variables, which a user's own command can use or ignore. Ctrl-C during
/// a command also ends this process, by the same signal.

/// Makes the preprocessed text or file from the source, by the user's command if there is one,
/// otherwise by the library. If the run ends here (-E), moves the file into place. True on success;
/// otherwise the fault has been reported, and the output so far is moved into place if possible.
[[nodiscard]] bool PreprocessSource(const SlcCommandLine& line, SlcRunFiles& files);

/// After a failure, writes the library's preprocessed text where a command would have left its
/// file; does nothing if a command preprocessed. Ignores write errors, since the failure has been
/// reported.
void KeepPreprocessedText(const SlcCommandLine& line, SlcRunFiles& files);

/// Makes the shared object from the C++ file, and then moves that file into place if it is kept.
/// True if the command returned 0 and the files that exist are in place; otherwise the fault has
/// been reported.
[[nodiscard]] bool BuildSharedObject(const SlcCommandLine& line, SlcRunFiles& files);

/// Moves the file to its final place; `place` is this path, for the report. False after a reported
/// failure.
[[nodiscard]] bool KeepFile(SlcUnfinishedFile& file, const std::string& place);
