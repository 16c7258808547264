#pragma once

#include "machine/translate/QxLiveness.h"

/// Replaces a flag by another flag that has the same value wherever the first one is read. Returns
/// false if there are no such flags. `liveness` must have been computed for the block, and stays
/// valid. `variables` is the number of variables. O(n log n) for n drafts and operands.
bool QxJoinFlags(QxDraftBlock& block, QxLiveness& liveness, std::size_t variables);
