#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/inlayHint`: returns hints in a range: the derived detail of locals that are
/// declared without one, and, in calls of functions of the source, the name of the formal before an
/// argument that is not that name itself. The settings can turn off each of the two.
[[nodiscard]] SqxJson SqxLsInlayHints(SqxLsWorkspace& workspace, const SqxJson& params);
