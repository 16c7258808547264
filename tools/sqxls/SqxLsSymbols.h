#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/documentSymbol`: shaders and functions with their parameters and locals, macros.
[[nodiscard]] SqxJson SqxLsDocumentSymbols(SqxLsWorkspace& workspace, const SqxJson& params);

/// `workspace/symbol`: shaders and functions of all sources in the folders of the workspace, found
/// by their tokens. Reads the files each time.
[[nodiscard]] SqxJson SqxLsWorkspaceSymbols(SqxLsWorkspace& workspace, const SqxJson& params);
