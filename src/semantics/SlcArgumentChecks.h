#pragma once

#include <cstddef>
#include <string>

class SlcExprNode;
class SlcSemanticError;

/// True if an argument for an output formal can be written: it must be a variable or an element,
/// but neither an input formal nor an element of a uniform array whose index is not uniform.
/// Otherwise reports the fault at the argument; `position` counts from 0. `SlcCheckDetail` must
/// have visited the argument.
[[nodiscard]] bool SlcCheckOutputArgument(SlcSemanticError& errors, const SlcExprNode* argument,
                                          std::size_t position, const std::string& function);
