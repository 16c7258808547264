#pragma once

#include "sqxls/SqxLsWorkspace.h"

// Definitions and uses of names.

/// `textDocument/definition`; also finds an included file from the line that includes it.
[[nodiscard]] SqxJson SqxLsDefinition(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/references`, in the source and the files that it includes.
[[nodiscard]] SqxJson SqxLsReferences(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/documentHighlight`.
[[nodiscard]] SqxJson SqxLsHighlights(SqxLsWorkspace& workspace, const SqxJson& params);
