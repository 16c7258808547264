#pragma once

#include "machine/translate/QxDraftWriter.h"
#include "machine/translate/QxLiveness.h"

/// Fuses two instructions if only the second uses the result of the first: a copy is forwarded to
/// the instruction that computes the value, a product is fused with the sum or difference that uses
/// it. Drops changes of flags that are not read. Values stay the same to the bit.
///
/// `writer` must have written a whole block, whose jumps refer to drafts; it also writes the fused
/// instructions. `liveness` must have been computed for that block and stays valid. O(n) for n
/// drafts and operands.
void QxFuse(QxDraftWriter& writer, QxLiveness& liveness);
