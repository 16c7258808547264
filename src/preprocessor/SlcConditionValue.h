#pragma once

#include <vector>

#include "preprocessor/SlcPreprocessorRun.h"
#include "preprocessor/SlcSourceToken.h"

/// The value of the condition after `#if` or `#elif`, whose macros have been replaced: an integer
/// expression of C, with all operators but assignments, computed in 64 bits (C99 6.10.1). Names
/// that are left are 0. `directive` is the place of the directive's name.
///
/// False after a report too.
[[nodiscard]] bool SlcConditionHolds(SlcPreprocessorRun& run, const SlcSourceToken& directive,
                                     const std::vector<SlcSourceToken>& tokens);
