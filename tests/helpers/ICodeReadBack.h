#pragma once

#include <string>

#include "icode/SlcListICode.h"

/// Prints the list, reads the text and prints what was read. Empty if both texts are the same, else
/// the two, or what the parser says.
[[nodiscard]] std::string ICodeReadBackFault(const SlcListICode& list);
