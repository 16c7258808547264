#pragma once

#include <string>

#include "backends/SlcCText.h"
#include "icode/SlcInterForm.h"

/// Writes the description of the shader that programs can read from the shared object without
/// loading it: one text, in the section `QxShaderFacts`. docs/generated-code.md describes it.
class SlcCShaderFacts : private SlcCText {
public:
    explicit SlcCShaderFacts(SlcText& out) : SlcCText(out) {}

    /// Writes the description. Call it after the code of the shader has been written, since it
    /// numbers the shader's operands and replaces constants in the lists of default values.
    void Gen(SlcInterForm& form);
};
