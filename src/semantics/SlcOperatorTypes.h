#pragma once

#include <vector>

#include "frontend/SlcBinOpNodes.h"
#include "frontend/SlcExprNodes.h"

// Computes the possible types of operators from those of their operands. The result is empty if the
// operands have no common rule, and {error} if an operand has been reported.

/// Returns the types of arithmetic operators and of dot and cross products. Of point, vector and
/// normal, a set contains only the type of the result.
[[nodiscard]] std::vector<SlcTypeNode*> SlcTypesOfBinOp(const SlcBinOpExprNode& operation);
/// Returns the types of a negation: floats, colors, points, vectors and normals.
[[nodiscard]] std::vector<SlcTypeNode*> SlcTypesOfMinus(const SlcExprNode* operand);
/// Returns the types of `?:`. A float branch is promoted to the type of the other. Branches cannot
/// be arrays or calls without a value.
[[nodiscard]] std::vector<SlcTypeNode*> SlcTypesOfConditional(const SlcExprNode* thenValue,
                                                              const SlcExprNode* elseValue);
