#pragma once

#include <vector>

#include "preprocessor/SlcPreprocessor.h"

/// Returns the macros that are defined for every source, unless another preprocessor is chosen.
[[nodiscard]] std::vector<SlcPreprocessorOptions::Macro> SlcPreprocessorMacros();
