#pragma once

#include <optional>
#include <span>
#include <string_view>

/// The value of a built-in for constant arguments, in double precision; nothing if the primitive
/// is none of those that can be evaluated or has no value there. The guards are those of the
/// run time: where the mathematical function has no real value, the result is 0.
[[nodiscard]] std::optional<double> SlcFoldBuiltIn(std::string_view primitive,
                                                   std::span<const double> arguments);
