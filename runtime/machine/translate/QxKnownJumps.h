#pragma once

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxMachineVariables.h"

/// Drops conditional jumps that are never taken, since an earlier jump has tested the same flag.
/// Targets of codes are indexes of drafts, before and after the pass. `variables` are those of the
/// program. O(n) for n drafts.
void QxDropKnownJumps(QxDraftBlock& block, const QxMachineVariables& variables);
