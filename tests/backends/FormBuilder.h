#pragma once

#include <string>
#include <vector>

#include "icode/SlcICodes.h"
#include "icode/SlcInterForm.h"
#include "sqx/SqxShader.h"

/// Builds a compiled shader by hand, writes it, and reads the file back.
class FormBuilder {
public:
    FormBuilder();

    [[nodiscard]] SlcInterForm& Form() { return m_form; }
    /// Adds a predefined variable, which must exist, and returns its operand.
    SlcOperand Predefined(const std::string& name);
    /// Adds a parameter with the default value `init`, a uniform float unless specified otherwise,
    /// and returns its operand.
    SlcOperand Parameter(const std::string& name, SlcOperand init,
                         SlcTypeNode* type = SlcTypeNode::AFloat(),
                         SlcDetailNode* detail = SlcDetailNode::AUniform(),
                         SlcStorageSpecNode* storage = SlcStorageSpecNode::AInput());
    /// Returns the code that initializes the last parameter. `perPoint` is true if the default
    /// value depends on the shading context.
    SlcListICode& InitialCode(bool perPoint);
    SlcOperand Local(SlcTypeNode* type, SlcDetailNode* detail = SlcDetailNode::AVarying());
    void Space(const std::string& name);
    void Add(SlcPtr<SlcICode> code) { m_form.m_mainList->AddICode(std::move(code)); }

    /// Returns the text of the byte-code file.
    [[nodiscard]] std::string Text();
    /// Returns the shader that the reader makes of the file.
    [[nodiscard]] SqxShader Shader();
    /// Returns the instructions of the main block, one per line, without their positions.
    [[nodiscard]] std::string MainText();
    /// Generates the file and returns the reports on standard error.
    [[nodiscard]] std::string Reports();

private:
    SlcOptionsControl m_options;
    SlcInterForm m_form;
    int m_locals = 0;
};

/// Returns a float constant.
[[nodiscard]] inline SlcOperand Number(double value)
{
    return SlcLexType::Float(value);
}
