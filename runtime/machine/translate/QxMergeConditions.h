#pragma once

#include "machine/translate/QxDraft.h"

/// Merges the brackets of a condition with those right after them if both require the same value of
/// the same flag and the first ones do not write it. Targets of codes stay indexes of drafts. O(n)
/// for n drafts.
void QxMergeConditions(QxDraftBlock& block);
