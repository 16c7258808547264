#pragma once

#include <memory>
#include <string>

#include "icode/SlcICodeNames.h"
#include "icode/SlcListICode.h"

/// Prints intermediate code as text, which `SlcICodeParser` reads, except for comments.
/// docs/icode.md shows the text of each instruction; for example
///
///     { f0 = t < 0.5; f0?( Ci = Kd * Cs; ) } u0 = any f0; !u0? goto L0; t0 = NORMALIZE(N) simd;
///     L0:
class SlcICodeText {
public:
    /// Returns the text of one instruction. `names` must be the same object for all instructions of
    /// one text.
    [[nodiscard]] static std::string Of(SlcICode& code, SlcICodeNames& names);
    /// Returns the instructions of the list on one line, separated by blanks.
    [[nodiscard]] static std::string Of(const SlcListICode& list);
};
