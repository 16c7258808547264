#pragma once

#include "sqxls/SqxLsWorkspace.h"

// `textDocument/foldingRange` and `textDocument/selectionRange`, which need the tokens alone.

/// Blocks and lists of more than one line, comments, and conditions of the preprocessor.
[[nodiscard]] SqxJson SqxLsFoldingRanges(SqxLsWorkspace& workspace, const SqxJson& params);

/// For each place what encloses it, from the token over statements, brackets and definitions to the
/// whole file.
[[nodiscard]] SqxJson SqxLsSelectionRanges(SqxLsWorkspace& workspace, const SqxJson& params);
