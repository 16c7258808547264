#pragma once

#include <string>
#include <vector>

#include "sqx/SqxElfFile.h"

/// Refuses a shader, a shared object, whose shadeops are not all in libraries of the folders: its
/// generated code would pass over what is not there. Nothing is loaded for that. Throws
/// `QxHostError` with the words that byte-code is refused with. A file that does not say what it
/// needs, as older compilers built them, passes.
void QxCheckShadeopNeeds(const SqxElfFile& file, const std::vector<std::string>& folders);
