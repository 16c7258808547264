// The order of the parts of the file, and the parts that contain no code of the shader. Most names
// come from SlcGeneratedText; the run time's headers and renderers depend on them.
//
// docs/generated-code.md describes the file. Tested by tests/backends/CFileTest.cpp, whose golden
// texts are whole files, and by tests/host, which compares shared objects with byte-code.

#include "backends/SlcGenCCode.h"

#include <map>

#include "backends/SlcCLocals.h"
#include "backends/SlcCShadeopTables.h"
#include "backends/SlcCShaderFacts.h"
#include "backends/SlcGeneratedText.h"
#include "backends/SlcSpaceName.h"
#include "frontend/SlcShaderTypeNode.h"
#include "sqx/SqxFileHead.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcSymbolEntry.h"

using Generated = SlcGeneratedText;

SlcGenCCode::SlcGenCCode(SlcPtr<SlcSemanticError> errors, SlcOptionsControl* options, SlcText& out)
    : SlcCText(out),
      m_errors(errors),
      m_statements(std::move(errors), out),
      m_options(options)
{
}

void SlcGenCCode::GenCCode(SlcInterForm& form)
{
    m_form = &form;
    CheckSpaceNames();
    GenHeader();
    GenParamsDescription();
    GenLocals();
    SlcCShadeopTables shadeops(m_out, form.m_dsoFunctions);
    shadeops.GenInitDSO();
    shadeops.GenCleanupDSO();
    GenInterfaceVesrion();
    GenUseRayTracingFunc(form.m_usesRaytracing);
    GenModifyPointFunc(form.m_PModified);
    GenMatrixIndexes();
    GenRegisterFunc();
    GenInterrogate();
    GenInitialize();
    if (m_initAtShadeTime)
        GenInitializeAtShadeTime();
    GenDestroy();
    if (form.m_shaderType->IsLight())
        GenEvaluateLightShader();
    else if (IsLitShader())
        GenEvaluateSurfaceShader();
    else if (form.m_shaderType->IsImager())
        GenEvaluateImagerShader();
    else
        GenEvaluateDisplacementShader();
    SlcCShaderFacts(m_out).Gen(form);
}

bool SlcGenCCode::IsLitShader() const
{
    return m_form->m_shaderType->SeesLights();
}

const SlcOperand& SlcGenCCode::Parameter(std::size_t i) const
{
    return m_form->m_parameters[i].entry->GetIntCodeVar();
}

std::string SlcGenCCode::Visible(std::size_t parameter) const
{
    return std::string("i_visibles[") + Generated::sm_visibleIndexPrefix +
           Parameter(parameter)->GetName() + "]";
}

/// Reports spaces that are distinct in the shader but not in the generated file.
void SlcGenCCode::CheckSpaceNames()
{
    std::map<std::string, std::string> spaces;
    for (const SlcStringLiteralNode* space : m_form->m_spaces) {
        const auto [entry, isNew] =
            spaces.emplace(SlcMatrixIndexName(space->GetText()), space->GetText());
        // The list contains each space once, so the texts of the two differ.
        if (!isNew)
            m_errors->Error(m_form->m_shader, "Coordinate spaces " + entry->second + " and " +
                                                  space->GetText() + " have the same name in C++");
    }
}

void SlcGenCCode::GenHeader()
{
    Line("#define SLC_MAJOR_VERSION ", k_sqxMajorVersion);
    Line("#define SLC_MINOR_VERSION ", k_sqxMinorVersion);
    Line();
    Line("#include \"", Generated::sm_slcHeaderFile, "\"");
}

void SlcGenCCode::GenParamsDescription()
{
    Line("static QxShaderToken *", Generated::sm_shaderParamsDescrName, " = 0;");
}

void SlcGenCCode::GenLocals()
{
    SlcCLocals locals(m_out);
    locals.Add(*m_form->m_mainList);
    locals.GenVarsStructure();
    if (m_options->m_createLocalVars) {
        locals.GenCreateLocalVars();
        locals.GenDestroyLocalVars();
    }
}

void SlcGenCCode::GenInterfaceVesrion()
{
    Line(Generated::sm_slcPrefixFunc, Generated::sm_slcVersionFuncName,
         "(int *o_majorVersion, int *o_minorVersion)");
    Line("{");
    Line("\t*o_majorVersion = ", k_sqxMajorVersion, ";");
    Line("\t*o_minorVersion = ", k_sqxMinorVersion, ";");
    Line("}");
}

void SlcGenCCode::GenUseRayTracingFunc(bool usesRaytracing)
{
    Line(Generated::sm_slcPrefixFuncInt, Generated::sm_useRayTracingFuncName, "(void)");
    Line("{");
    Line("\treturn ", usesRaytracing ? 1 : 0, ";");
    Line("}");
}

void SlcGenCCode::GenModifyPointFunc(bool modifiesPoint)
{
    Line(Generated::sm_slcPrefixFuncInt, Generated::sm_slcModifyPointFuncName, "(void)");
    Line("{");
    Line("\treturn ", modifiesPoint ? 1 : 0, ";");
    Line("}");
}

void SlcGenCCode::GenMatrixIndexes()
{
    Line();
    int k = 0;
    for (const SlcStringLiteralNode* space : m_form->m_spaces)
        Line("#define ", SlcMatrixIndexName(space->GetText()), " ", k++);
    Line();
}
