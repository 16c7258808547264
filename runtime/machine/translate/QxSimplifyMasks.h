#pragma once

#include "machine/translate/QxLiveness.h"

/// Removes masks: a write that does not affect other points is done for all points. The values that
/// points compute stay the same, and so does what `liveness` says, which must have been computed
/// for the block. O(n) for n drafts.
void QxIgnoreMasks(QxDraftBlock& block, QxLiveness& liveness);

/// Removes brackets around a few writes that ignore the mask. The targets of codes stay indexes
/// among the drafts. O(n) for n drafts.
void QxDropShortBrackets(QxDraftBlock& block);
