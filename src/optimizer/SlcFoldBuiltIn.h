#pragma once

#include <optional>
#include <span>

#include "sqx/SqxPrimitive.h"

/// The value of a built-in for constant arguments, in the steps and the precision of the run time,
/// so that what follows from it, such as a whole part, is the same; nothing if the primitive is
/// none of those that can be evaluated. Where the mathematical function has no real value, the
/// result is 0, or no finite number.
[[nodiscard]] std::optional<float> SlcFoldBuiltIn(SqxPrimitive primitive,
                                                  std::span<const float> arguments);
