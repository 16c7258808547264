#pragma once

#include "sqxls/SqxLsWorkspace.h"

// `textDocument/formatting` and `textDocument/rangeFormatting`.

[[nodiscard]] SqxJson SqxLsFormat(SqxLsWorkspace& workspace, const SqxJson& params);
[[nodiscard]] SqxJson SqxLsFormatRange(SqxLsWorkspace& workspace, const SqxJson& params);
