#pragma once

#include <string>

#include "driver/SlcCommandLine.h"
#include "driver/SlcRunFiles.h"

/// Compiles what the preprocessor made, writes the output, and moves the preprocessed file into its
/// place if it is to be kept. An earlier output of this source goes first, so that a refused source
/// leaves none.
///
/// True if an output was written; if not, that has been reported. Throws `SlcCompilationEnd` after
/// a report with which the program ends at once.
[[nodiscard]] bool CompileSource(const SlcCommandLine& line, SlcRunFiles& files);

/// The path up to its first dot, as the closing line of a refused compile shows it.
[[nodiscard]] std::string SlcCutPath(const std::string& inputFile);

/// Removes the earlier output of this source from the output directory, as far as it follows from
/// the source's name: the shader's name, which names the output, is not known yet. The last part of
/// the cut path is taken instead.
void DeleteSQX(const SlcCommandLine& line);
