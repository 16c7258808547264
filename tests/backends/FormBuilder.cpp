#include "backends/FormBuilder.h"

#include <gtest/gtest.h>

#include <sstream>

#include "backends/SlcGenByteCode.h"
#include "frontend/SlcShaderTypeNode.h"
#include "sqx/SqxDump.h"
#include "sqx/SqxReader.h"
#include "symbols/SlcHiddenVariables.h"
#include "symbols/SlcSymbolEntry.h"

namespace {

SlcSurfaceShaderTypeNode& Surface()
{
    static SlcSurfaceShaderTypeNode node;
    return node;
}

}  // namespace

FormBuilder::FormBuilder() : m_form(m_options)
{
    m_form.m_shaderName = SlcLexicalNode::CreateIdent("made");
    m_form.m_shaderType = &Surface();
    Space("object");
    Space("shader");
}

void FormBuilder::Space(const std::string& name)
{
    m_form.m_spaces.push_back(SlcLexicalNode::CreateString('"' + name + '"'));
}

SlcOperand FormBuilder::Predefined(const std::string& name)
{
    const auto& info = SlcHiddenVariables::GetVarInfoHidden(name);
    auto entry =
        MakeShared<SlcVarSymbolEntry>(SlcLexicalNode::CreateIdent(name), info.type(), info.detail(),
                                      SlcStorageSpecNode::AReadWrite(), true, nullptr);
    entry->MakeIntCodeVar(info.accessor);
    m_form.m_hiddenVars.push_back(entry);
    return entry->GetIntCodeVar();
}

SlcOperand FormBuilder::Parameter(const std::string& name, SlcOperand init, SlcTypeNode* type,
                                  SlcDetailNode* detail, SlcStorageSpecNode* storage)
{
    auto entry = MakeShared<SlcVarSymbolEntry>(SlcLexicalNode::CreateIdent(name), type, detail,
                                               storage, false, nullptr);
    entry->MakeIntCodeVar(name.c_str());
    SlcParameterInfo& info = m_form.m_parameters.emplace_back();
    info.entry = entry;
    info.initList = MakeShared<SlcListICode>();
    info.initValues = {std::move(init)};
    info.space = SlcLexicalNode::CreateString("\"\"");
    return entry->GetIntCodeVar();
}

SlcListICode& FormBuilder::InitialCode(bool perPoint)
{
    m_form.m_parameters.back().initDependsOnContext = perPoint;
    return *m_form.m_parameters.back().initList;
}

SlcOperand FormBuilder::Local(SlcTypeNode* type, SlcDetailNode* detail)
{
    const auto name = SlcLexicalNode::CreateIdent("x_" + std::to_string(m_locals++));
    auto local = MakeShared<SlcLexType>(name, type, detail, SlcStorageSpecNode::ALocal());
    m_form.m_mainList->AddLocalVar(local);
    return local;
}

std::string FormBuilder::Text()
{
    SlcText text;
    SlcGenByteCode(m_form.m_errors, text).GenByteCode(m_form);
    return text.Str();
}

SqxShader FormBuilder::Shader()
{
    SqxReader reader;
    EXPECT_TRUE(reader.Read(Text())) << reader.Message();
    return reader.Shader();
}

std::string FormBuilder::MainText()
{
    const SqxShader shader = Shader();
    std::istringstream lines(SqxDumpBlock(shader, shader.main));
    std::string text;
    for (std::string line; std::getline(lines, line); text += line + '\n')
        line.erase(0, 8);
    return text;
}

std::string FormBuilder::Reports()
{
    testing::internal::CaptureStderr();
    static_cast<void>(Text());
    return testing::internal::GetCapturedStderr();
}
