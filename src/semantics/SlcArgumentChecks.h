#pragma once

#include <cstddef>
#include <string>

class SlcExprNode;
class SlcSemanticError;

/// True if an argument for an output formal can be written: it must be a variable, an element or
/// an assignment to one. Refused are input formals, their elements, and elements of uniform arrays
/// at an index that is not uniform. If it cannot be written, reports the fault at the argument;
/// `position` counts from 0. `SlcCheckDetail` must have visited the argument.
[[nodiscard]] bool SlcCheckOutputArgument(SlcSemanticError& errors, const SlcExprNode* argument,
                                          std::size_t position, const std::string& function);
