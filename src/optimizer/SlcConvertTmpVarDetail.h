#pragma once

#include "icode/SlcListICode.h"

class SlcVariableNumbers;

/// Sets the detail of each non-uniform local that is used only within single points of parallel
/// runs, and is no array, reference or string, to temp-uniform, and that of all other non-uniform
/// locals to varying. The C++ back end stores a single value of a temp-uniform variable, so that
/// the C++ compiler can keep it in a register.
///
/// Such a variable does not occur outside parallel runs, and each read follows a write in the same
/// run at the same or an enclosing bracket, so its value never leaves the point or the run. One
/// walk over the list.
void SlcConvertTmpVarDetail(const SlcListICode& list, const SlcVariableNumbers& variables);

/// Resets temp-uniform details to unknown, which is required before the list is changed again.
void SlcForgetTmpVarDetail(const SlcVariableNumbers& variables);
