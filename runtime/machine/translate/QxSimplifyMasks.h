#pragma once

#include "machine/translate/QxLiveness.h"

/// Removes masks: a write that does not affect other points is done for all points, and brackets
/// around a few such writes are removed. The values that points compute stay the same.
///
/// `liveness` must have been computed for the block; it is stale afterwards. The targets of codes
/// stay indexes among the drafts. O(n) for n drafts.
void QxSimplifyMasks(QxDraftBlock& block, QxLiveness& liveness);
