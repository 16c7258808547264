#pragma once

#include "sqxls/SqxLsWorkspace.h"

// `textDocument/foldingRange` and `textDocument/selectionRange`, which need only the tokens.

/// Returns the folds of more than one line: brackets of all kinds with their contents, comments,
/// and the branches of preprocessor conditions.
[[nodiscard]] SqxJson SqxLsFoldingRanges(SqxLsWorkspace& workspace, const SqxJson& params);

/// Returns for each place the ranges that enclose it, from the inside to the outside: the token,
/// then the arguments, statements and brackets around it, and the whole file.
[[nodiscard]] SqxJson SqxLsSelectionRanges(SqxLsWorkspace& workspace, const SqxJson& params);
