#pragma once

#include "machine/QxDraft.h"
#include "machine/QxMachineVariables.h"

/// Joins parallel brackets, what stands between them, and loops around them to brackets that run
/// strip by strip. The targets of the codes are indexes among the drafts, before and after.
/// O(n) for n drafts, but for jumps that cross each other.
void QxJoinRuns(QxDraftBlock& block, const QxMachineVariables& variables);
