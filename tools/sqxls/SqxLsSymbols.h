#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/documentSymbol`: returns the shaders and functions of the document, with their
/// parameters and locals, and its macros.
[[nodiscard]] SqxJson SqxLsDocumentSymbols(SqxLsWorkspace& workspace, const SqxJson& params);

/// `workspace/symbol`: returns the shaders and functions whose names contain the letters of a query
/// in its order, from all open files and the sources in the folders of the workspace, up to 5000
/// files. Scans the tokens of all these files each time.
[[nodiscard]] SqxJson SqxLsWorkspaceSymbols(SqxLsWorkspace& workspace, const SqxJson& params);
