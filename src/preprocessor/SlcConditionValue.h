#pragma once

#include <vector>

#include "preprocessor/SlcPreprocessorRun.h"
#include "preprocessor/SlcSourceToken.h"

/// Evaluates `tokens`, the condition after `#if` or `#elif`, in which macros have been replaced: an
/// integer expression of C with all operators except assignments, computed in 64 bits (C99 6.10.1).
/// Remaining names are 0. `directive` is the token of the directive's name.
///
/// Also returns false after a reported error.
[[nodiscard]] bool SlcConditionHolds(SlcPreprocessorRun& run, const SlcSourceToken& directive,
                                     const std::vector<SlcSourceToken>& tokens);
