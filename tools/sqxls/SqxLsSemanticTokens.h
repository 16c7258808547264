#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/semanticTokens/full`: returns the kinds of names, with their detail as a
/// modifier.
[[nodiscard]] SqxJson SqxLsSemanticTokens(SqxLsWorkspace& workspace, const SqxJson& params);
/// Returns the names of the token types and modifiers, in the order of their numbers.
[[nodiscard]] SqxJson SqxLsSemanticLegend();
