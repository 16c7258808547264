#pragma once

#include <array>

#include "symbols/SlcSymbolTable.h"

/// The rules that compute the detail of a call to a built-in. `checkDetail`, indexed by
/// `SqxDetailRule`, is for the call as it is written. `checkInlineDetail`, indexed by
/// `SqxInlineRule`, is for a call in the body of a function: when that function is called, it
/// computes the detail again, with the details of the arguments. The rules are in `semantics`,
/// which passes them in.
struct SlcDetailRules {
    std::array<SlcCheckDetailProc, 3> checkDetail;
    std::array<SlcCheckInlineDetailProc, 9> checkInlineDetail;
};

/// Makes a table with the whole library of the language and the variable `PI`: the outermost scope
/// of every compilation. The entries of a function are made when its name is first looked up or
/// added.
[[nodiscard]] SlcPtr<SlcSymbolTable> SlcBuiltInTable(const SlcDetailRules& rules);
