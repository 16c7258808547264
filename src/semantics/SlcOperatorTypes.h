#pragma once

#include <vector>

#include "frontend/SlcBinOpNodes.h"
#include "frontend/SlcExprNodes.h"

// Computes the set of types that an operator can have from the sets of its operands. The set is
// empty if no rule combines the operands, and {error} if an operand has the error type, after a
// report.

/// Returns the types of an arithmetic operation, or of a dot or cross product. The set of an
/// arithmetic operation contains at most one of point, vector and normal, determined by the
/// operands. That of a cross product is {AAnyPoint}, which stands for all three.
[[nodiscard]] std::vector<SlcTypeNode*> SlcTypesOfBinOp(const SlcBinOpExprNode& operation);
/// Returns the types of a negation: those of float, color and the first point, vector or normal
/// that the operand has.
[[nodiscard]] std::vector<SlcTypeNode*> SlcTypesOfMinus(const SlcExprNode* operand);
/// Returns the types that both branches of `?:` have. A float branch is promoted to the type of the
/// other; of two different types of the point family, the set contains that of `elseValue`. Empty
/// if a branch is an array or a call without a value.
[[nodiscard]] std::vector<SlcTypeNode*> SlcTypesOfConditional(const SlcExprNode* thenValue,
                                                              const SlcExprNode* elseValue);
