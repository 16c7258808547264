#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/formatting`: returns the edits that format the document.
[[nodiscard]] SqxJson SqxLsFormat(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/rangeFormatting`: returns only the edits within the range and in the gap before
/// its first line.
[[nodiscard]] SqxJson SqxLsFormatRange(SqxLsWorkspace& workspace, const SqxJson& params);
