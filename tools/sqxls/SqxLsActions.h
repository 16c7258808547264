#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/codeAction`: the edits that certain advice names, and the declaration of a local
/// whose detail is known.
[[nodiscard]] SqxJson SqxLsCodeActions(SqxLsWorkspace& workspace, const SqxJson& params);
