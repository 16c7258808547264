#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/completion`: what can be named at a place, what fits the type first; words of
/// strings, and files to include.
[[nodiscard]] SqxJson SqxLsCompletion(SqxLsWorkspace& workspace, const SqxJson& params);
/// `completionItem/resolve`: the documentation of what is chosen.
[[nodiscard]] SqxJson SqxLsResolveCompletion(SqxLsWorkspace& workspace, const SqxJson& item);
