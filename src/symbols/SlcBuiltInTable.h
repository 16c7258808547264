#pragma once

#include <array>

#include "symbols/SlcSymbolTable.h"

/// The rules that give the detail of a call, by the numbers that the rows of the library carry: as
/// written, and for a call that is being evaluated. The rules live in `semantics`, which hands them
/// in.
struct SlcDetailRules {
    std::array<SlcCheckDetailProc, 3> checkDetail;
    std::array<SlcCheckInlineDetailProc, 9> checkInlineDetail;
};

/// A new table with the whole library of the language and the variable `PI`: the outermost scope
/// of every compile. Its entries are made as they are looked up, since few shaders use many.
[[nodiscard]] SlcPtr<SlcSymbolTable> SlcBuiltInTable(const SlcDetailRules& rules);
