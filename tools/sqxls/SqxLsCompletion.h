#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/completion`: returns the names that are visible at a place, those of the expected
/// type first, and in strings and directives the possible words and files.
[[nodiscard]] SqxJson SqxLsCompletion(SqxLsWorkspace& workspace, const SqxJson& params);
/// `completionItem/resolve`: returns the documentation of the chosen item.
[[nodiscard]] SqxJson SqxLsResolveCompletion(SqxLsWorkspace& workspace, const SqxJson& item);
