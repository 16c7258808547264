#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/completion`: names that are visible at a place, those of the expected type first;
/// words in strings, and files to include.
[[nodiscard]] SqxJson SqxLsCompletion(SqxLsWorkspace& workspace, const SqxJson& params);
/// `completionItem/resolve`: the documentation of the chosen item.
[[nodiscard]] SqxJson SqxLsResolveCompletion(SqxLsWorkspace& workspace, const SqxJson& item);
