#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// Answers `textDocument/codeAction`: edits for advice that names one, and a declaration with
/// detail for a local whose detail is known.
[[nodiscard]] SqxJson SqxLsCodeActions(SqxLsWorkspace& workspace, const SqxJson& params);
