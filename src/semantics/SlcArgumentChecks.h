#pragma once

#include <cstddef>
#include <string>

class SlcExprNode;
class SlcSemanticError;

/// The variable that an argument in an output position writes to may be written to. Reports
/// where it may not, at the argument; `position` counts from 0.
[[nodiscard]] bool SlcCheckOutputArgument(SlcSemanticError& errors, const SlcExprNode* argument,
                                          std::size_t position, const std::string& function);
