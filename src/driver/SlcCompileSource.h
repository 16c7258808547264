#pragma once

#include <string>

#include "driver/SlcCommandLine.h"
#include "driver/SlcRunFiles.h"

/// Compiles the preprocessed source, writes the output, and moves the preprocessed file into place
/// if it is kept. Removes earlier outputs, so that a rejected source leaves none: first the one
/// named after the source, and after a rejection also the one named after the shader.
///
/// True if the output was written and a kept file is in place; otherwise the reason has been
/// reported. Throws `SlcCompilationEnd` after a report that ends the program at once.
[[nodiscard]] bool CompileSource(const SlcCommandLine& line, SlcRunFiles& files);

/// Returns the path up to its first dot, for the last message of a failed compile and for
/// `DeleteSQX`.
[[nodiscard]] std::string SlcCutPath(const std::string& inputFile);

/// Removes the earlier output of this source from the output directory. The output is named after
/// the shader, whose name is not known yet, so assumes the last part of `SlcCutPath` as the name.
void DeleteSQX(const SlcCommandLine& line);
