#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// Answers `textDocument/codeAction` with edits that carry out the compiler's advice, and with
/// edits that add the derived detail to declarations of locals.
[[nodiscard]] SqxJson SqxLsCodeActions(SqxLsWorkspace& workspace, const SqxJson& params);
