#pragma once

#include "machine/translate/QxLiveness.h"

/// Rewrites that make masks cheap: a write that no other point feels is done for all points, and
/// brackets that hold a few such writes vanish. What points compute stays the same.
///
/// `liveness`: computed, of the block; it is stale behind this. Leaves the targets of the codes as
/// indexes among the drafts. O(n) for n drafts.
void QxSimplifyMasks(QxDraftBlock& block, QxLiveness& liveness);
