#pragma once

#include "sqxls/SqxLsWorkspace.h"

// Definitions and uses of names.

/// `textDocument/definition`: returns the place of the definition of a name; in the file name of an
/// include directive, the beginning of that file. Returns null if there is no such place.
[[nodiscard]] SqxJson SqxLsDefinition(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/references`: returns the uses of a name in the source and the files that it
/// includes; the definition is one of them only if the request asks for it.
[[nodiscard]] SqxJson SqxLsReferences(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/documentHighlight`: returns the uses of a name in this document, each marked as a
/// write (also a definition) or as a read.
[[nodiscard]] SqxJson SqxLsHighlights(SqxLsWorkspace& workspace, const SqxJson& params);
