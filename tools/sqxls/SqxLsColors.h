#pragma once

#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/documentColor`: returns each color that is written with three numbers, as RGB with
/// components clamped to 0 to 1.
[[nodiscard]] SqxJson SqxLsDocumentColors(SqxLsWorkspace& workspace, const SqxJson& params);
/// `textDocument/colorPresentation`: returns the text for a color that the user has picked, in the
/// color space of the color that it replaces.
[[nodiscard]] SqxJson SqxLsColorPresentations(SqxLsWorkspace& workspace, const SqxJson& params);
