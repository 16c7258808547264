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
    /// A predefined variable by its name.
    SlcOperand Predefined(const std::string& name);
    /// A uniform float parameter whose default value is `init`, or any other kind.
    SlcOperand Parameter(const std::string& name, SlcOperand init,
                         SlcTypeNode* type = SlcTypeNode::AFloat(),
                         SlcDetailNode* detail = SlcDetailNode::AUniform(),
                         SlcStorageSpecNode* storage = SlcStorageSpecNode::AInput());
    /// The code of the parameter last made; it depends on the shading context if `perPoint`.
    SlcListICode& InitialCode(bool perPoint);
    SlcOperand Local(SlcTypeNode* type, SlcDetailNode* detail = SlcDetailNode::AVarying());
    void Space(const std::string& name);
    void Add(SlcPtr<SlcICode> code) { m_form.m_mainList->AddICode(std::move(code)); }

    /// The text of the file.
    [[nodiscard]] std::string Text();
    /// The file as it is read back.
    [[nodiscard]] SqxShader Shader();
    /// The instructions of the main block, one a line, without their positions.
    [[nodiscard]] std::string MainText();
    /// What is reported on standard error while the text is made.
    [[nodiscard]] std::string Reports();

private:
    SlcOptionsControl m_options;
    SlcInterForm m_form;
    int m_locals = 0;
};

/// Shorthand for operands in the tests.
[[nodiscard]] inline SlcOperand Number(double value)
{
    return SlcLexType::Float(value);
}
