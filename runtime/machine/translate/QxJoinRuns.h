#pragma once

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxMachineVariables.h"

/// Joins parallel brackets, what stands between them, and loops around them to brackets that run
/// strip by strip. Which drafts go together is found by `QxFindStretches`; this puts brackets
/// around them, and uniform instructions in front.
///
/// `block`: of a whole block, ended by a stop. The targets of the codes are indexes among the
/// drafts, before and after. `variables`: of the program that the block belongs to.
/// O(n) for n drafts, but for jumps that cross each other.
void QxJoinRuns(QxDraftBlock& block, const QxMachineVariables& variables);
