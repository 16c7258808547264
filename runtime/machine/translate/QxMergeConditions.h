#pragma once

#include "machine/translate/QxDraft.h"

/// Merges the brackets of a condition with those right after them if both require the same value of
/// the same flag, the first ones do not write it, and no jump leads between them. `copyFlag` must
/// be set, see `QxDraftBlock::MarkWrittenFlags`. Targets of codes stay indexes of drafts. O(n) for
/// n drafts.
void QxMergeConditions(QxDraftBlock& block);
