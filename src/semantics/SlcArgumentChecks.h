#pragma once

#include <cstddef>
#include <string>

class SlcExprNode;
class SlcSemanticError;

/// The variable that an argument in an output position writes to may be written to: it is a
/// variable or an element, no input formal, and not one value where points write several. Reports
/// where it may not, at the argument; `position` counts from 0. Details must be known.
[[nodiscard]] bool SlcCheckOutputArgument(SlcSemanticError& errors, const SlcExprNode* argument,
                                          std::size_t position, const std::string& function);
