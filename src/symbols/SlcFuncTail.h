#pragma once

#include <vector>

#include "symbols/SlcFuncVarArgExpr.h"

/// Returns the values of a variable tail in their fixed positions: the order in which a built-in
/// with a constant number of arguments takes them. A pair contributes only its value.
[[nodiscard]] std::vector<SlcFuncVarArgSingle*> SlcTailValues(SlcFuncVarArgExpr* tail);

/// Returns the name and value pairs of a tail, in the order of its row.
[[nodiscard]] std::vector<SlcFuncVarArgPair*> SlcTailPairs(SlcFuncVarArgExpr* tail);

/// Returns the value for the argument at `position` after the fixed ones, counted in fixed
/// positions; a repeated value takes all further arguments. Null past the end. Linear in
/// `position`.
[[nodiscard]] SlcFuncVarArgSingle* SlcTailValueAt(SlcFuncVarArgExpr* tail, std::size_t position);
