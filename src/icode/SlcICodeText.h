#pragma once

#include <memory>
#include <string>

#include "icode/SlcICodeNames.h"
#include "icode/SlcListICode.h"

/// Prints intermediate code as text, which `SlcICodeParser` reads. docs/icode.md shows the text of
/// each instruction; for example
///
///     { f0 = t < 0.5; f0?( Ci = Kd * Cs; ) } u0 = any f0; !u0? goto L0; t0 = NORMALIZE(N) simd;
///     L0:
class SlcICodeText {
public:
    /// The text of one instruction. Its operands get their names from `names`, which one text
    /// shares between its instructions.
    [[nodiscard]] static std::string Of(SlcICode& code, SlcICodeNames& names);
    /// The instructions of the list on one line, separated by blanks.
    [[nodiscard]] static std::string Of(const SlcListICode& list);
};
