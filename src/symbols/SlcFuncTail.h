#pragma once

#include <vector>

#include "symbols/SlcFuncVarArgExpr.h"

/// The values of a variable tail in their fixed places: the order in which a built-in with a
/// constant number of arguments takes them, each pair by its value alone.
[[nodiscard]] std::vector<SlcFuncVarArgSingle*> SlcTailValues(SlcFuncVarArgExpr* tail);

/// The name and value pairs of a tail, in the order of its row.
[[nodiscard]] std::vector<SlcFuncVarArgPair*> SlcTailPairs(SlcFuncVarArgExpr* tail);

/// The value that takes the argument at `position` behind the fixed ones, counted in fixed
/// places; a repeated value takes all further ones. Null behind the end. Linear in `position`.
[[nodiscard]] SlcFuncVarArgSingle* SlcTailValueAt(SlcFuncVarArgExpr* tail, std::size_t position);
