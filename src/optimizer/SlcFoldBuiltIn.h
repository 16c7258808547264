#pragma once

#include <optional>
#include <span>

#include "sqx/SqxPrimitive.h"

/// Returns the value of a built-in for constant arguments, computed with the steps and the
/// precision of the run time, so that folding does not change any result. Returns nothing if the
/// primitive cannot be evaluated. Where the mathematical function has no real value, the result
/// is 0 or not finite.
[[nodiscard]] std::optional<float> SlcFoldBuiltIn(SqxPrimitive primitive,
                                                  std::span<const float> arguments);
