#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/documentColor`: returns each `color (r, g, b)` of three numbers, in RGB.
[[nodiscard]] SqxJson SqxLsDocumentColors(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/colorPresentation`: returns the text for a color that the user has picked.
[[nodiscard]] SqxJson SqxLsColorPresentations(SqxLsWorkspace& workspace, const SqxJson& params);
