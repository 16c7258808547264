#pragma once

#include "machine/translate/QxDraftWriter.h"
#include "machine/translate/QxLiveness.h"

/// Reduces the instructions that compute and test flags. Values stay the same.
///
/// `writer` must have written a whole block, whose jumps refer to drafts; it also writes the fused
/// instructions. `liveness` must have been computed for that block and stays valid. Masks must have
/// been simplified before (`QxIgnoreMasks`). `variables` is the number of variables. O(n log n) for
/// n drafts and operands.
void QxFuseFlags(QxDraftWriter& writer, QxLiveness& liveness, std::size_t variables);
