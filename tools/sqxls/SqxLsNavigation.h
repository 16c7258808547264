#pragma once

#include "sqxls/SqxLsWorkspace.h"

// Definitions and uses of names.

/// `textDocument/definition`: returns the place of the definition, or the included file if the
/// position is in the name of a file; null if there is none.
[[nodiscard]] SqxJson SqxLsDefinition(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/references`: returns the uses of a name in the source and the files that it
/// includes; the definition is one of them only if the request asks for it.
[[nodiscard]] SqxJson SqxLsReferences(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/documentHighlight`: returns the uses of a name in this document, each marked as a
/// read or a write.
[[nodiscard]] SqxJson SqxLsHighlights(SqxLsWorkspace& workspace, const SqxJson& params);
