#pragma once

#include "machine/translate/QxDraftWriter.h"
#include "machine/translate/QxLiveness.h"

/// Makes one instruction of two where the first only serves the second: a copy forwarded to where
/// the value is computed, a product added or subtracted in one go. Values stay the same to the bit.
///
/// `writer`: has written a whole block, whose jumps are among the drafts; what is fused is written
/// by it. `liveness`: computed, of that block; it stays valid. O(n) for n drafts, but for
/// chains of copies.
void QxFuse(QxDraftWriter& writer, QxLiveness& liveness);
