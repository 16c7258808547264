#pragma once

#include <vector>

#include "frontend/SlcNodes.h"
#include "symbols/SlcFuncSymbolEntry.h"

/// What the declaration of a function says of one argument of a call.
struct SlcCallFormal {
    SlcTypeNode* type;                         // any type takes the argument as it is
    bool isOutput;                             // the function writes the argument
    SlcFuncVarArgSingle* tailValue = nullptr;  // its place in a variable tail; null for the name
                                               // of a pair and for a fixed argument
};

/// One for each argument of a checked call of a built-in or shadeop.
[[nodiscard]] std::vector<SlcCallFormal> SlcFormalsOf(const SlcProcCallExprNode& call);
