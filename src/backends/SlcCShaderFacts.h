#pragma once

#include <string>

#include "backends/SlcCText.h"
#include "icode/SlcInterForm.h"

/// Writes the description of the shader that programs can read from the shared object without
/// loading it: one text, in the section `QxShaderFacts`. docs/generated-code.md describes it.
class SlcCShaderFacts : private SlcCText {
public:
    explicit SlcCShaderFacts(SlcText& out) : SlcCText(out) {}

    /// Writes the description. Must follow the code of the shader, since it assigns new numbers and
    /// constants to the operands of default values.
    void Gen(SlcInterForm& form);
};
