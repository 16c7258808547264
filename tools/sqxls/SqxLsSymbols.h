#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/documentSymbol`: returns shaders and functions with their parameters and locals,
/// and macros.
[[nodiscard]] SqxJson SqxLsDocumentSymbols(SqxLsWorkspace& workspace, const SqxJson& params);

/// `workspace/symbol`: returns the shaders and functions that match a query, in the sources in the
/// folders of the workspace and in all open files. Scans the tokens of all files each time.
[[nodiscard]] SqxJson SqxLsWorkspaceSymbols(SqxLsWorkspace& workspace, const SqxJson& params);
