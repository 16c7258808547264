#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/codeAction`: returns edits for a range: fixes of problems that the compiler
/// reports there, if a single fix is likely, and, for a source that compiles, additions of the
/// derived detail to declarations of locals.
[[nodiscard]] SqxJson SqxLsCodeActions(SqxLsWorkspace& workspace, const SqxJson& params);
