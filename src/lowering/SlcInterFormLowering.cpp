// Fills the intermediate form of a shader: first sets the marks in the tree, which the lowering
// needs, then collects the shader's facts, and finally makes the main list. Default values are
// lowered while the facts are collected.
//
// Tested by tests/lowering/SlcInterFormTest.cpp.

#include "icode/SlcInterForm.h"

#include "lowering/SlcGenInterCode.h"
#include "lowering/SlcGetShaderInfo.h"
#include "lowering/SlcMarkLeaves.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcSymbolEntry.h"

SlcInterForm::SlcInterForm(SlcOptionsControl& options)
    : m_errors(MakeShared<SlcSemanticError>()),
      m_mainList(MakeShared<SlcListICode>()),
      m_options(options),
      m_codeGenerator(MakeShared<SlcGenInterCode>(m_errors, options))
{
}

SlcInterForm::~SlcInterForm() = default;

void SlcInterForm::GenInterForm(SlcSyntaxNode* root)
{
    SlcMarkLeaves()(root);
    SlcGetShaderInfo(m_errors, m_codeGenerator, *this)(root);
    m_mainList = m_codeGenerator->GenCode(root, m_shaderType, m_CiAssigned, m_OiAssigned);
    for (const auto& variable : m_hiddenVars)
        m_mainList->AddHiddenVar(variable->GetIntCodeVar());
    if (!m_errors->NoError())
        throw SlcCompilationError();
}
