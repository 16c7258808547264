#pragma once

#include <cstddef>
#include <string>

class SlcExprNode;
class SlcSemanticError;

/// True if an argument for an output formal can be written: it must be a variable or an element,
/// must not be an input formal, and must not be uniform if points write different values. Otherwise
/// reports the fault at the argument; `position` counts from 0. Details must be known.
[[nodiscard]] bool SlcCheckOutputArgument(SlcSemanticError& errors, const SlcExprNode* argument,
                                          std::size_t position, const std::string& function);
