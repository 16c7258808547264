#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/semanticTokens/full`: returns the token type of each use of a name in the
/// document, with modifiers for storage, detail and the kind of use.
[[nodiscard]] SqxJson SqxLsSemanticTokens(SqxLsWorkspace& workspace, const SqxJson& params);
/// Returns the names of the token types and modifiers, in the order of their numbers.
[[nodiscard]] SqxJson SqxLsSemanticLegend();
