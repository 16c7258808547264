#pragma once

#include "sqxshade/SqxShadeOptions.h"

/// Makes the picture that the command line asks for, from the shaders to the file. What shaders
/// print goes to standard output; messages and, on a terminal, the progress to standard error.
/// Throws `SqxPictureError` or `QxHostError`.
void SqxShade(const SqxShadeOptions& options);
