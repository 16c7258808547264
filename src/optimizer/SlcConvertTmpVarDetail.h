#pragma once

#include "icode/SlcListICode.h"

class SlcVariableNumbers;

/// Gives each local that only serves single points inside parallel runs the temp-uniform detail,
/// and each other one that is not uniform the varying one. For the C++ back end, which stores a
/// temp-uniform variable once: the C++ compiler can keep it in a register.
///
/// Such a variable does not occur outside parallel runs, and each read of it stands behind a write
/// in the same run and at the same or an outer bracket, so that no value leaves the point or the
/// run. One walk over the list.
void SlcConvertTmpVarDetail(const SlcListICode& list, const SlcVariableNumbers& variables);

/// Takes the details back, as a list needs it that is going to change.
void SlcForgetTmpVarDetail(const SlcVariableNumbers& variables);
