#pragma once

#include "icode/SlcListICode.h"

class SlcVariableNumbers;

/// Sets the detail of each local that is used only within single points of parallel runs to
/// temp-uniform, and that of other non-uniform locals to varying. The C++ back end stores a
/// temp-uniform variable once, so that the C++ compiler can keep it in a register.
///
/// Such a variable does not occur outside parallel runs, and each read follows a write in the same
/// run at the same or an enclosing bracket, so its value never leaves the point or the run. One
/// walk over the list.
void SlcConvertTmpVarDetail(const SlcListICode& list, const SlcVariableNumbers& variables);

/// Resets temp-uniform details to unknown, which is required before the list is changed again.
void SlcForgetTmpVarDetail(const SlcVariableNumbers& variables);
