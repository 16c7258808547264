#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/semanticTokens/full`: returns the type of each name, with modifiers for its detail
/// and its use.
[[nodiscard]] SqxJson SqxLsSemanticTokens(SqxLsWorkspace& workspace, const SqxJson& params);
/// Returns the names of the token types and modifiers, in the order of their numbers.
[[nodiscard]] SqxJson SqxLsSemanticLegend();
