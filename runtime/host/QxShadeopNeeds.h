#pragma once

#include <string>
#include <vector>

#include "sqx/SqxElfFile.h"

/// Checks that all shadeops that a shared object calls, and their init and cleanup functions, exist
/// in libraries in `folders`; the generated code would skip calls of missing functions. Reads the
/// libraries as files and loads none of them. Throws `QxHostError`, with the same text as for
/// byte-code. Objects of older compilers do not list their shadeops and pass.
void QxCheckShadeopNeeds(const SqxElfFile& file, const std::vector<std::string>& folders);
