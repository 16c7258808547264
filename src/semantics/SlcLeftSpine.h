#pragma once

#include <vector>

#include "frontend/SlcBinOpNodes.h"

/// A chain of binary operators, which grows to the left, taken apart: a sum of many terms is
/// walked by a loop and not by recursion.
struct SlcLeftSpine {
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
