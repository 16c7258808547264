#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/formatting`: returns the edits that format the document.
[[nodiscard]] SqxJson SqxLsFormat(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/rangeFormatting`: returns only those edits that lie in the range, which is
/// extended to the start of its first line and the blanks and line breaks before that.
[[nodiscard]] SqxJson SqxLsFormatRange(SqxLsWorkspace& workspace, const SqxJson& params);
