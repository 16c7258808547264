#pragma once

#include <string>

#include "icode/SlcListICode.h"

/// Prints the list, parses the text, and prints the parsed list. Returns an empty text if both
/// texts are equal, otherwise both texts or, after a syntax error, the message and the first text.
[[nodiscard]] std::string ICodeReadBackFault(const SlcListICode& list);
