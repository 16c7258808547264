#pragma once

#include <vector>

#include "frontend/SlcBinOpNodes.h"
#include "frontend/SlcExprNodes.h"

// The sets of types that operators make of the sets of their operands. Each is empty if the
// operands have no common rule, and {error} if an operand has been reported.

/// The types of arithmetic operators and of dot and cross products, whose operands have their sets.
/// Of the point family a set holds one kind, that of the result.
[[nodiscard]] std::vector<SlcTypeNode*> SlcTypesOfBinOp(const SlcBinOpExprNode& operation);
/// The types of a negation: floats, colors and the point family.
[[nodiscard]] std::vector<SlcTypeNode*> SlcTypesOfMinus(const SlcExprNode* operand);
/// The types of `?:`; a float branch is promoted to the type of the other. Arrays and calls without
/// a value cannot be chosen between.
[[nodiscard]] std::vector<SlcTypeNode*> SlcTypesOfConditional(const SlcExprNode* thenValue,
                                                              const SlcExprNode* elseValue);
