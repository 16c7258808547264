#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/signatureHelp`: returns all overloads of the function whose call encloses a place,
/// and which argument is being typed; null if no call encloses it.
[[nodiscard]] SqxJson SqxLsSignatureHelp(SqxLsWorkspace& workspace, const SqxJson& params);
