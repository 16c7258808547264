#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/completion`: returns the names that are visible at a place, first those of the
/// expected type, and the keywords; in a string or a directive, the possible words or files.
[[nodiscard]] SqxJson SqxLsCompletion(SqxLsWorkspace& workspace, const SqxJson& params);
/// `completionItem/resolve`: returns the chosen item; if it is a built-in function or a predefined
/// variable, with its documentation.
[[nodiscard]] SqxJson SqxLsResolveCompletion(SqxLsWorkspace& workspace, const SqxJson& item);
