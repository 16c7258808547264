#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// The command of the lens; its arguments are the URI of a source and, optionally, {"show": false}
/// for a client that shows the page itself.
constexpr const char* k_sqxLsPreview = "sqxls.preview";

/// `textDocument/codeLens`: returns a lens "Preview" for each shader that the document defines.
[[nodiscard]] SqxJson SqxLsLenses(SqxLsWorkspace& workspace, const SqxJson& params);

/// `workspace/executeCommand`: starts a preview of a source, unless one already runs. Returns the
/// address of its page as "uri", and as "external" whether the server must ask the editor to open
/// that address. Throws `SqxLsError` if the command is invalid or the preview does not start.
[[nodiscard]] SqxJson SqxLsExecute(SqxLsWorkspace& workspace, const SqxJson& params);
