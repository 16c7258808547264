#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/documentColor`: returns each color that is written with three numbers, as RGB.
[[nodiscard]] SqxJson SqxLsDocumentColors(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/colorPresentation`: returns the text for a color that the user has picked.
[[nodiscard]] SqxJson SqxLsColorPresentations(SqxLsWorkspace& workspace, const SqxJson& params);
