#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/completion`: returns the names that can be used at a place, ranked with those of
/// the expected type first, and the keywords. In a string or a directive, returns the possible
/// words or files; in a comment, an empty list.
[[nodiscard]] SqxJson SqxLsCompletion(SqxLsWorkspace& workspace, const SqxJson& params);
/// `completionItem/resolve`: returns the given item; if it has the name of a built-in function, a
/// predefined variable or `PI`, with its documentation.
[[nodiscard]] SqxJson SqxLsResolveCompletion(SqxLsWorkspace& workspace, const SqxJson& item);
