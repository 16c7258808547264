#pragma once

#include <vector>

#include "preprocessor/SlcPreprocessor.h"

/// The macros that each source may ask for, without an option.
[[nodiscard]] std::vector<SlcPreprocessorOptions::Macro> SlcPreprocessorMacros();
