#pragma once

#include <deque>
#include <string>

#include "icode/SlcLexType.h"

// `printf` and `format` receive the addresses of their arguments, and the format states their
// types. The first argument is the format.

/// Returns one letter per argument, including the format: f float, p point, c color, m matrix, s
/// string; for an array, the letter of its elements.
[[nodiscard]] std::string SlcTypeLetters(const std::deque<SlcOperand>& args);

/// True if the format is a constant without octal escapes, and each of its conversions has an
/// argument whose type it can read. There may be more arguments than conversions.
[[nodiscard]] bool SlcFormatMatches(const std::deque<SlcOperand>& args);
