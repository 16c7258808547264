#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/completion`: returns the names that are visible at a place, those of the expected
/// type first; in a string or a directive, the possible words or files.
[[nodiscard]] SqxJson SqxLsCompletion(SqxLsWorkspace& workspace, const SqxJson& params);
/// `completionItem/resolve`: returns the chosen item with its documentation.
[[nodiscard]] SqxJson SqxLsResolveCompletion(SqxLsWorkspace& workspace, const SqxJson& item);
