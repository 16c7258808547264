#pragma once

#include "icode/SlcListICode.h"

class SlcVariableNumbers;

/// Sets the details of the non-uniform locals and temporaries. A variable becomes temp-uniform if
/// each of its values is used only in the parallel run that computes it, for the same point, and if
/// it is no array, array reference or string; all others become varying. The C++ back end stores a
/// single value of a temp-uniform variable, so that the C++ compiler can keep it in a register.
///
/// A temp-uniform variable does not occur outside parallel runs, and each read follows a write in
/// the same run, in the same guard or an enclosing one, so its value never leaves the point or the
/// run. One walk over the list.
void SlcConvertTmpVarDetail(const SlcListICode& list, const SlcVariableNumbers& variables);

/// Resets temp-uniform details to unknown, which is required before the list is changed again.
void SlcForgetTmpVarDetail(const SlcVariableNumbers& variables);
