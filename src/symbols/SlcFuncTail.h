#pragma once

#include <vector>

#include "symbols/SlcFuncVarArgExpr.h"

/// Returns the values of a variable tail in the order in which the built-in's instruction has
/// them. A pair of a name and a value contributes only its value. Empty if `tail` is null.
[[nodiscard]] std::vector<SlcFuncVarArgSingle*> SlcTailValues(SlcFuncVarArgExpr* tail);

/// Returns the name and value pairs of a tail, in the order of its card. Empty if `tail` is null.
[[nodiscard]] std::vector<SlcFuncVarArgPair*> SlcTailPairs(SlcFuncVarArgExpr* tail);

/// Returns the value of the tail at fixed position `position`, where 0 is the first argument after
/// the fixed arguments; a repeated value stands for all further positions. Null past the end.
/// Linear in the length of the tail.
[[nodiscard]] SlcFuncVarArgSingle* SlcTailValueAt(SlcFuncVarArgExpr* tail, std::size_t position);
