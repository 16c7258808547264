#pragma once

#include "driver/SlcCommandLine.h"
#include "driver/SlcRunFiles.h"

/// Compiles the preprocessed file, from the parse to the output of one back end, and moves the
/// preprocessed file into its place if it is to be kept. An earlier output of this source goes
/// first, so that a refused source leaves none.
///
/// True if an output was written; if not, that has been reported. The input file's name in `line`
/// is cut as `DeleteSQX` tells.
[[nodiscard]] bool CompileSource(SlcCommandLine& line, SlcRunFiles& files);

/// Removes the earlier output of this source from the output directory, as far as the source's
/// name tells it: the shader's name, which names the output, is not known yet.
///
/// The name ends at the first dot of the whole path. The input file's name in `line` is cut there
/// too, and later messages show it like that.
void DeleteSQX(SlcCommandLine& line);
