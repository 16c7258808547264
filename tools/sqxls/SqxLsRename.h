#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/prepareRename`: returns the range of a name that can be renamed; null for another
/// one.
[[nodiscard]] SqxJson SqxLsPrepareRename(SqxLsWorkspace& workspace, const SqxJson& params);

/// `textDocument/rename`, within the source and what it includes. Refused with the reason if a name
/// would mean something else afterwards. Costs a compile of the result.
[[nodiscard]] SqxJson SqxLsRename(SqxLsWorkspace& workspace, const SqxJson& params);
