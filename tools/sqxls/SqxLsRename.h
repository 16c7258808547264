#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/prepareRename`: returns the range and the text of the name at the position; null
/// if there is none or it cannot be renamed.
[[nodiscard]] SqxJson SqxLsPrepareRename(SqxLsWorkspace& workspace, const SqxJson& params);

/// `textDocument/rename`: returns the edits of the source and the files that it includes. Compiles
/// the result, and throws `SqxLsError` with the reason if a name would then mean something else or
/// there would be more errors. Also throws if the request is invalid, if there is no name at the
/// position, if it cannot be renamed, or if the new one is not a valid name.
[[nodiscard]] SqxJson SqxLsRename(SqxLsWorkspace& workspace, const SqxJson& params);
