#pragma once

#include <ostream>
#include <string>

#include "backends/SlcCText.h"
#include "icode/SlcInterForm.h"

/// Writes what a shared object says of its shader to programs that read the file without loading
/// it: one text, in the section `QxShaderFacts`. docs/generated-code.md describes it.
class SlcCShaderFacts : private SlcCText {
public:
    explicit SlcCShaderFacts(std::ostream& out) : SlcCText(out) {}

    /// After the code of the shader was written, since the operands of its default values get other
    /// numbers and constants.
    void Gen(SlcInterForm& form);
};
