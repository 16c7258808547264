#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/signatureHelp`: returns all overloads of the call around a place, with the
/// argument that
/// is being typed.
[[nodiscard]] SqxJson SqxLsSignatureHelp(SqxLsWorkspace& workspace, const SqxJson& params);
