#pragma once

#include <optional>
#include <span>

#include "sqx/SqxPrimitive.h"

/// Returns the value of a built-in for constant arguments, computed by the function of the run
/// time, so that folding does not change any result. Returns nothing if the primitive is not a
/// foldable function of floats, or has another number of arguments. For the arc sine of a number
/// outside -1..1 the value is NaN, unlike at run time, so that the caller does not fold the call.
[[nodiscard]] std::optional<float> SlcFoldBuiltIn(SqxPrimitive primitive,
                                                  std::span<const float> arguments);
