// Fills the form: first the facts that no instruction tells, then the main list. The facts come
// first since default values are lowered on the way to them, and since the lowering asks which
// loops a `break` leaves.
//
// Tested by tests/icode/SlcInterFormTest.cpp.

#include "icode/SlcInterForm.h"

#include "icode/SlcGenInterCode.h"
#include "icode/SlcGetShaderInfo.h"
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
    SlcGetShaderInfo info(m_errors, m_codeGenerator);
    info(root);
    m_parameters = info.m_parameters;
    m_paramInitLists = info.m_paramInitLists;
    m_paramInitValues = info.m_paramInitValues;
    m_shaderName = info.m_shaderName;
    m_shader = info.m_shader;
    m_shaderType = info.m_shaderType;
    m_hiddenVars = info.m_hiddenVars;
    m_usesRaytracing = info.m_usesRaytracing;
    m_spaces = info.m_spaces;
    m_dsoNames = info.m_dsoNames;
    m_dsoFunctions = info.m_dsoFunctions;
    m_needsObjectSpace = info.m_needsObjectSpace;
    m_paramSpaces = info.m_paramSpaces;
    m_PModified = info.m_PModified;
    m_initDependsOnContext = info.m_initDependsOnContext;

    m_mainList = m_codeGenerator->GenCode(root, m_shaderType, info.m_CiAssigned, info.m_OiAssigned);
    for (const auto& variable : m_hiddenVars)
        m_mainList->AddHiddenVar(variable->GetIntCodeVar());
    if (!m_errors->NoError())
        throw SlcCompilationError();
}
