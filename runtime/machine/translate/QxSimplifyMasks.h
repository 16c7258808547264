#pragma once

#include "machine/translate/QxLiveness.h"

/// Removes masks: in brackets of a condition, a cheap function whose result other points do not
/// need is computed for all points. The values that are read stay the same. `liveness` must have
/// been computed for the block, and stays valid. O(n) for n drafts, plus one walk of `liveness`.
void QxIgnoreMasks(QxDraftBlock& block, QxLiveness& liveness);

/// Removes the brackets of a condition around at most two cheap functions if these ignore the mask.
/// Targets of codes stay indexes of drafts. O(n) for n drafts.
void QxDropShortBrackets(QxDraftBlock& block);

/// Replaces brackets of a few cheap instructions, which cost no more than the test whether any
/// point is active, by `Where`. Targets of codes stay indexes of drafts. Call it last: other passes
/// do not know this step. O(n) for n drafts.
void QxOmitTests(QxDraftBlock& block);
