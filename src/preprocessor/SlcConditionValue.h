#pragma once

#include <vector>

#include "preprocessor/SlcPreprocessorRun.h"
#include "preprocessor/SlcSourceToken.h"

/// Evaluates `tokens`, the condition after `#if` or `#elif`, in which macros have been replaced: an
/// integer constant expression of C, computed in 64 bits (C99 6.10.1), which may contain the comma
/// operator. Remaining names are 0. `directive` is the token of the directive's name.
///
/// True if the value is not 0. False also after an error, which is reported.
[[nodiscard]] bool SlcConditionHolds(SlcPreprocessorRun& run, const SlcSourceToken& directive,
                                     const std::vector<SlcSourceToken>& tokens);
