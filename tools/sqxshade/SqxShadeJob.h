#pragma once

#include "sqxshade/SqxShadeOptions.h"

/// Compiles those shaders that are sources, and renders and writes the picture that the options
/// describe. Texts that shaders print go to standard output; messages and, on a terminal, progress
/// go to standard error. Throws `std::runtime_error`, such as `SqxPictureError` or `QxHostError`.
void SqxShade(const SqxShadeOptions& options);
