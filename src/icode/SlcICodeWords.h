#pragma once

#include <deque>
#include <string_view>

#include "icode/SlcGridForm.h"
#include "icode/SlcICode.h"

/// Makes the instruction that is written as a call of `word` but does not call a primitive:
/// `color(r, g, b)`, `illuminate(P, Ps)`. Returns null if there is none with that number of results
/// and arguments.
[[nodiscard]] SlcPtr<SlcICode> SlcMakeICodeOfWord(std::string_view word,
                                                  const std::deque<SlcOperand>& results,
                                                  const std::deque<SlcOperand>& arguments,
                                                  const SlcGridForm& form);
