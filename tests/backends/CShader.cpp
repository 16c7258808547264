#include "CShader.h"

#include "backends/SlcGenCCode.h"

namespace CForm {

Shader::Shader(const char* name, SlcShaderTypeNode* type)
{
    m_form.m_shaderName = SlcLexicalNode::CreateIdent(name);
    m_form.m_shaderType = type;
    AddSpace("object");
    AddSpace("shader");
}

SlcVarSymbolEntry& Shader::AddEntry(const char* name, SlcTypeNode* type, SlcDetailNode* detail,
                                    SlcStorageSpecNode* storage)
{
    SlcPtr<SlcVarSymbolEntry>& entry = m_form.m_parameters.emplace_back().entry;
    entry = MakeShared<SlcVarSymbolEntry>(SlcLexicalNode::CreateIdent(name), type, detail, storage,
                                          false, nullptr);
    entry->MakeIntCodeVar(name);
    return *entry;
}

const SlcOperand& Shader::AddParameter(const char* name, SlcTypeNode* type, SlcDetailNode* detail,
                                       const SlcOperand& value, SlcPtr<SlcListICode> init,
                                       const char* space, bool dependsOnContext)
{
    SlcVarSymbolEntry& entry = AddEntry(name, type, detail, SlcStorageSpecNode::AInput());
    SlcParameterInfo& info = m_form.m_parameters.back();
    info.initList = init ? init : MakeShared<SlcListICode>();
    info.initValues = {value};
    info.needsObjectSpace = space == std::string("object");
    info.space = Literal(space);
    info.initDependsOnContext = dependsOnContext;
    return entry.GetIntCodeVar();
}

void Shader::AddOutputParameter(const char* name, SlcTypeNode* type, const SlcOperand& value)
{
    AddParameter(name, type, SlcDetailNode::AVarying(), value);
    SlcParameterInfo info = m_form.m_parameters.back();
    m_form.m_parameters.pop_back();
    AddEntry(name, type, SlcDetailNode::AVarying(), SlcStorageSpecNode::AOutput());
    info.entry = m_form.m_parameters.back().entry;
    m_form.m_parameters.back() = info;
}

void Shader::AddHidden(const char* name, const SlcOperand& operand)
{
    const auto entry =
        MakeShared<SlcVarSymbolEntry>(SlcLexicalNode::CreateIdent(name), operand->GetType(),
                                      operand->GetDetail(), operand->GetStorage(), true, nullptr);
    entry->GetIntCodeVar() = operand;
    m_form.m_hiddenVars.push_back(entry);
}

std::string Shader::Write()
{
    SlcText text;
    SlcGenCCode(m_form.m_errors, &m_options, text).GenCCode(m_form);
    return text.Str();
}

}  // namespace CForm
