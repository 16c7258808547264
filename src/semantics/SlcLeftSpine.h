#pragma once

#include <vector>

#include "frontend/SlcBinOpNodes.h"

/// A chain of binary operators that is nested on the left, as a list, so that a sum of many terms
/// is walked in a loop instead of recursively.
///
///     a + b * c - d        first a; operations: the difference, then the sum. The product is not
///                          part of the chain, but the right operand of the sum
struct SlcLeftSpine {
    /// Collects the chain whose outermost operator is `top`. Linear in its length.
    explicit SlcLeftSpine(SlcBinOpExprNode* top) : first(top)
    {
        for (auto* operation = top; operation; operation = first->AsBinOpExpr()) {
            operations.push_back(operation);
            first = operation->GetLeft();
        }
    }

    SlcExprNode* first;                         // the leftmost operand
    std::vector<SlcBinOpExprNode*> operations;  // the outermost first
};
