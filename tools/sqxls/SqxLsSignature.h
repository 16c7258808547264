#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/signatureHelp`: returns all overloads of the function, or the macro, whose call
/// encloses a place, which of them is meant, and which argument is being typed; null if no known
/// function or macro is called there.
[[nodiscard]] SqxJson SqxLsSignatureHelp(SqxLsWorkspace& workspace, const SqxJson& params);
