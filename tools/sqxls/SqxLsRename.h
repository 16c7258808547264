#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/prepareRename`: returns the range of the name at the position; null if it cannot
/// be renamed.
[[nodiscard]] SqxJson SqxLsPrepareRename(SqxLsWorkspace& workspace, const SqxJson& params);

/// `textDocument/rename`: returns the edits of the source and the files that it includes. Compiles
/// the result, and throws `SqxLsError` with the reason if a name would then mean something else or
/// there would be more errors. Also throws if the old or the new name is unsuitable.
[[nodiscard]] SqxJson SqxLsRename(SqxLsWorkspace& workspace, const SqxJson& params);
