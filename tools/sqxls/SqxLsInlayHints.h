#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/inlayHint`: returns the detail of locals that are declared without one, and the
/// names of
/// the arguments of functions of the source.
[[nodiscard]] SqxJson SqxLsInlayHints(SqxLsWorkspace& workspace, const SqxJson& params);
