#pragma once

#include "icode/SlcListICode.h"

class SlcValueSpans;

/// Returns a list of the same instructions, but where a temporary only passes the result of a
/// whole-grid call to a variable, the call writes the variable, and there is no copy. `spans` are
/// those of `list`, whose instructions do not change. Only `m_icodes` of the returned list is set.
/// Linear.
[[nodiscard]] SlcPtr<SlcListICode> SlcForwardResults(const SlcListICode& list,
                                                     const SlcValueSpans& spans);
