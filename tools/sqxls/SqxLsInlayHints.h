#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/inlayHint`: returns the derived detail of locals that are declared without one,
/// and the names of formals at the arguments of calls to functions of the source, in the range and
/// as far as the settings allow.
[[nodiscard]] SqxJson SqxLsInlayHints(SqxLsWorkspace& workspace, const SqxJson& params);
