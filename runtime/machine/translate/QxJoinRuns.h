#pragma once

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxMachineVariables.h"

/// Joins parallel brackets, the code between them, and loops around them into brackets that run
/// strip by strip. `QxFindStretches` finds the drafts to join; this pass puts brackets around them,
/// and hoists uniform instructions and the lighting of the grid before them.
///
/// `copyFlag` is not set in the conditions that it adds: call `QxDraftBlock::MarkWrittenFlags`.
///
/// `block` must end with a stop. Targets of codes are indexes of drafts, before and after the pass.
/// `variables` are those of the program. O(n) for n drafts: if too many jumps cross each other,
/// nothing is joined.
void QxJoinRuns(QxDraftBlock& block, const QxMachineVariables& variables);
