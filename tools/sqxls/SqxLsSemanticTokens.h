#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/semanticTokens/full`: what the names are, with the detail of their values as a
/// separate modifier.
[[nodiscard]] SqxJson SqxLsSemanticTokens(SqxLsWorkspace& workspace, const SqxJson& params);
/// The names of types and modifiers, in the order of their numbers.
[[nodiscard]] SqxJson SqxLsSemanticLegend();
