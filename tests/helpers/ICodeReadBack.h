#pragma once

#include <string>

#include "icode/SlcListICode.h"

/// Prints the list, parses the text, and prints the parsed list. Returns an empty text if both
/// texts are equal, else both texts, or the message of the parser.
[[nodiscard]] std::string ICodeReadBackFault(const SlcListICode& list);
