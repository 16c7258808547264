#pragma once

#include "sqxls/SqxLsWorkspace.h"

// Definitions and uses of names.

/// `textDocument/definition`: returns the place of the definition, or the included file if the
/// position is in the name of a file; null if there is none.
[[nodiscard]] SqxJson SqxLsDefinition(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/references`: returns all uses in the source and the files that it includes.
[[nodiscard]] SqxJson SqxLsReferences(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/documentHighlight`: returns all uses in this document, as reads or writes.
[[nodiscard]] SqxJson SqxLsHighlights(SqxLsWorkspace& workspace, const SqxJson& params);
