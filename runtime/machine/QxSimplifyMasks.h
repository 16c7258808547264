#pragma once

#include "machine/QxLiveness.h"

/// Rewrites that make masks cheap. `liveness`: computed, of the block. Leaves the targets of the
/// codes as indexes among the drafts.
void QxSimplifyMasks(QxDraftBlock& block, QxLiveness& liveness);
