#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/completion`: returns the names that can be used at a place, ranked with those of
/// the expected type first, and the keywords. In a string, returns spaces or other words with a
/// meaning there; after '#', directives; in an include, files; in a comment, an empty list.
[[nodiscard]] SqxJson SqxLsCompletion(SqxLsWorkspace& workspace, const SqxJson& params);
/// `completionItem/resolve`: returns the given item, with documentation if it has the name of a
/// built-in function, a predefined variable or `PI`.
[[nodiscard]] SqxJson SqxLsResolveCompletion(SqxLsWorkspace& workspace, const SqxJson& item);
