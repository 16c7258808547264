#pragma once

#include <string>

#include "icode/SlcListICode.h"

/// Prints the list, reads the text, and prints the result. Returns nothing if both texts are equal,
/// else both texts, or the message of the parser.
[[nodiscard]] std::string ICodeReadBackFault(const SlcListICode& list);
