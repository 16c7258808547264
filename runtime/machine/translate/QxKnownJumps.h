#pragma once

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxMachineVariables.h"

/// Drops jumps over uniform code whose flag an earlier jump has already decided. The targets of
/// codes are indexes among the drafts, before and after. O(n) for n drafts.
void QxDropKnownJumps(QxDraftBlock& block, const QxMachineVariables& variables);
