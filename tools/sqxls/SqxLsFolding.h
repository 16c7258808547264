#pragma once

#include "sqxls/SqxLsWorkspace.h"

// `textDocument/foldingRange` and `textDocument/selectionRange`, which need only the tokens.

/// Folds blocks and lists of more than one line, comments, and conditions of the preprocessor.
[[nodiscard]] SqxJson SqxLsFoldingRanges(SqxLsWorkspace& workspace, const SqxJson& params);

/// Returns for each place the ranges that enclose it: token, brackets, statements, definitions,
/// file.
[[nodiscard]] SqxJson SqxLsSelectionRanges(SqxLsWorkspace& workspace, const SqxJson& params);
