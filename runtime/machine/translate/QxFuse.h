#pragma once

#include "machine/translate/QxDraftWriter.h"
#include "machine/translate/QxLiveness.h"

/// Fuses adjacent instructions in parallel brackets if only the second uses the result of the
/// first: an instruction whose result is copied writes to the target of the copy, and a product is
/// fused with the sum or difference that uses it. Drops instructions that combine flags or set a
/// component if the result is not read. Values stay the same to the bit.
///
/// `writer` must have written a whole block, whose jumps refer to drafts; it also writes the fused
/// instructions. `liveness` must have been computed for that block and stays valid. O(n) for n
/// drafts and operands, plus one walk of `liveness`.
void QxFuse(QxDraftWriter& writer, QxLiveness& liveness);
