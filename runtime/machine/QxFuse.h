#pragma once

#include "machine/QxDraftWriter.h"
#include "machine/QxLiveness.h"

/// Makes one instruction of two where the first only serves the second. `liveness`: computed, of
/// the block that the writer wrote; it stays valid.
void QxFuse(QxDraftWriter& writer, QxLiveness& liveness);
