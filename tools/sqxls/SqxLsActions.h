#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/codeAction`: returns edits that fix problems that the compiler reports in a range,
/// and edits that add the derived detail to declarations of locals.
[[nodiscard]] SqxJson SqxLsCodeActions(SqxLsWorkspace& workspace, const SqxJson& params);
