#pragma once

#include <vector>

#include "frontend/SlcBinOpNodes.h"
#include "frontend/SlcExprNodes.h"

// Computes the possible types of operators from those of their operands. The result is empty if no
// rule combines the operands, and {error} if an operand has been reported.

/// Returns the types of an arithmetic operation or of a dot or cross product. Of the point family,
/// the set contains at most one type: that of the result.
[[nodiscard]] std::vector<SlcTypeNode*> SlcTypesOfBinOp(const SlcBinOpExprNode& operation);
/// Returns the types of a negation: float, color and one of the point family, if the operand has
/// them.
[[nodiscard]] std::vector<SlcTypeNode*> SlcTypesOfMinus(const SlcExprNode* operand);
/// Returns the types of `?:`. A float branch is promoted to the type of the other. Branches cannot
/// be arrays or calls without a value.
[[nodiscard]] std::vector<SlcTypeNode*> SlcTypesOfConditional(const SlcExprNode* thenValue,
                                                              const SlcExprNode* elseValue);
