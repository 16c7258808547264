#pragma once

#include <vector>

#include "preprocessor/SlcPreprocessor.h"

/// Returns the macros that are defined for every source.
[[nodiscard]] std::vector<SlcPreprocessorOptions::Macro> SlcPreprocessorMacros();
