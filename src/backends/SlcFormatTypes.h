#pragma once

#include <deque>
#include <string>

#include "icode/SlcLexType.h"

// `printf` and `format` get the addresses of their arguments, whose types the format states. The
// first argument is the format.

/// One letter an argument, the format included: f float, p point, c color, m matrix, s string; of
/// an array that of its elements.
[[nodiscard]] std::string SlcTypeLetters(const std::deque<SlcOperand>& args);

/// The format is a constant, and each of its conversions suits the argument that it takes.
[[nodiscard]] bool SlcFormatFits(const std::deque<SlcOperand>& args);
