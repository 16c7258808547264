#pragma once

#include <array>

#include "symbols/SlcSymbolTable.h"

/// The rules that compute the detail of a call. `checkDetail`, for a call as written, is indexed by
/// `SqxDetailRule`; `checkInlineDetail`, for a call in a function body that is being evaluated, by
/// `SqxInlineRule`. The rules are in `semantics`, which passes them in.
struct SlcDetailRules {
    std::array<SlcCheckDetailProc, 3> checkDetail;
    std::array<SlcCheckInlineDetailProc, 9> checkInlineDetail;
};

/// Makes a table with the whole library of the language and the variable `PI`: the outermost scope
/// of every compilation. The entries of a function are made when its name is first used.
[[nodiscard]] SlcPtr<SlcSymbolTable> SlcBuiltInTable(const SlcDetailRules& rules);
