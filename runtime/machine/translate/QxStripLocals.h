#pragma once

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxLiveness.h"
#include "machine/translate/QxMachineVariables.h"

/// Moves locals that live only within parallel brackets to variables that have room for one strip,
/// and lists the new variables as operands of `BeginParallel`, since a run must bind them again for
/// each strip. The `number` of `BeginParallel` becomes the length of strips. Brackets that run
/// point by point are not changed.
///
/// `block` must be whole, see `QxLiveness`, and `liveness` must have been computed for it. Do
/// not use `liveness` afterwards: it does not know the variables that this pass adds. O(n) for n
/// drafts, plus one walk of `liveness`.
void QxUseStripLocals(QxDraftBlock& block, QxLiveness& liveness, QxMachineVariables& variables);
