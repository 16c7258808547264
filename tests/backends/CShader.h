#pragma once

#include "COperands.h"
#include "icode/SlcInterForm.h"
#include "symbols/SlcSymbolEntry.h"

namespace CForm {

/// Builds a shader step by step and writes it as C++.
class Shader {
public:
    /// `type` must outlive the shader.
    Shader(const char* name, SlcShaderTypeNode* type);

    /// Adds an input parameter and returns its operand. After `init` has run, `value` contains its
    /// default value, in the coordinate space `space`, which has no quotes.
    const SlcOperand& AddParameter(const char* name, SlcTypeNode* type, SlcDetailNode* detail,
                                   const SlcOperand& value, SlcPtr<SlcListICode> init = nullptr,
                                   const char* space = "", bool dependsOnContext = false);
    void AddOutputParameter(const char* name, SlcTypeNode* type, const SlcOperand& value);
    void AddHidden(const char* name, const SlcOperand& operand);
    void AddSpace(const std::string& space) { m_form.m_spaces.push_back(Literal(space)); }
    void AddLocal(const SlcOperand& local) { m_form.m_mainList->AddLocalVar(local); }
    void Add(SlcPtr<SlcICode> code) { m_form.m_mainList->AddICode(std::move(code)); }

    [[nodiscard]] std::string Write();

    SlcOptionsControl m_options;
    SlcInterForm m_form{m_options};

private:
    SlcVarSymbolEntry& AddEntry(const char* name, SlcTypeNode* type, SlcDetailNode* detail,
                                SlcStorageSpecNode* storage);
};

}  // namespace CForm
