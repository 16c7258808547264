#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/documentSymbol`: returns shaders and functions with their parameters and locals,
/// and macros.
[[nodiscard]] SqxJson SqxLsDocumentSymbols(SqxLsWorkspace& workspace, const SqxJson& params);

/// `workspace/symbol`: returns shaders and functions of all sources in the folders of the
/// workspace, found by their tokens. Reads the files each time.
[[nodiscard]] SqxJson SqxLsWorkspaceSymbols(SqxLsWorkspace& workspace, const SqxJson& params);
