#pragma once

#include "machine/translate/QxDraft.h"

/// Merges the brackets of a condition with those right after them if both have the same flag and
/// the first ones do not write it. The targets of codes stay indexes among the drafts. O(n) for n
/// drafts.
void QxMergeConditions(QxDraftBlock& block);
