#pragma once

#include "sqxshade/SqxShadeOptions.h"

/// Compiles the shaders and renders and writes the picture that the command line asks for. Texts
/// that shaders print go to standard output; messages and, on a terminal, progress go to standard
/// error. Throws `std::runtime_error`, such as `SqxPictureError` or `QxHostError`.
void SqxShade(const SqxShadeOptions& options);
