#include "CShader.h"

#include <sstream>

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
    const auto entry = MakeShared<SlcVarSymbolEntry>(SlcLexicalNode::CreateIdent(name), type,
                                                     detail, storage, false, nullptr);
    entry->MakeIntCodeVar(name);
    m_form.m_parameters.push_back(entry);
    return *entry;
}

const SlcOperand& Shader::AddParameter(const char* name, SlcTypeNode* type, SlcDetailNode* detail,
                                       const SlcOperand& value, SlcPtr<SlcListICode> init,
                                       const char* space, bool dependsOnContext)
{
    SlcVarSymbolEntry& entry = AddEntry(name, type, detail, SlcStorageSpecNode::AInput());
    m_form.m_paramInitLists.push_back(init ? init : MakeShared<SlcListICode>());
    m_form.m_paramInitValues.push_back({value});
    m_form.m_needsObjectSpace.push_back(space == std::string("object"));
    m_form.m_paramSpaces.push_back(Literal(space));
    m_form.m_initDependsOnContext.push_back(dependsOnContext);
    return entry.GetIntCodeVar();
}

void Shader::AddOutputParameter(const char* name, SlcTypeNode* type, const SlcOperand& value)
{
    AddParameter(name, type, SlcDetailNode::AVarying(), value);
    m_form.m_parameters.pop_back();
    AddEntry(name, type, SlcDetailNode::AVarying(), SlcStorageSpecNode::AOutput());
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
    std::ostringstream text;
    SlcGenCCode(m_form.m_errors, &m_options, text).GenCCode(m_form);
    return text.str();
}

}  // namespace CForm
