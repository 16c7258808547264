#pragma once

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxLiveness.h"
#include "machine/translate/QxMachineVariables.h"

/// Moves locals that live only within parallel brackets to variables that have room for one strip,
/// and lists these as the operands of the draft that begins the brackets: a run must bind them
/// again for each strip. Its number becomes the length of strips.
///
/// `block` must be whole, and `liveness` must have been computed for it; the variables that this
/// pass adds are unknown to `liveness`, which must not be used afterwards. O(n) for n drafts, after
/// one walk of `liveness`.
void QxUseStripLocals(QxDraftBlock& block, QxLiveness& liveness, QxMachineVariables& variables);
