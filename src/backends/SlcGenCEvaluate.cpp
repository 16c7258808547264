// The body of the shader, QxEvaluate: in surfaces and volumes it first computes the default values
// that need shading data; then it makes the locals, runs the main list, and frees the locals. Its
// parameters depend on the kind of shader.
//
// Tested by tests/backends/CFileTest.cpp.

#include "backends/SlcGenCCode.h"
#include "backends/SlcGeneratedText.h"
#include "frontend/SlcShaderTypeNode.h"

using Generated = SlcGeneratedText;

void SlcGenCCode::GenEvaluateSurfaceShader()
{
    GenEvaluate("const QxSurfaceHidden &i_hiddens, QxVar* i_visibles, unsigned int i_numLights, "
                "QxLightInput *i_lights");
}

void SlcGenCCode::GenEvaluateImagerShader()
{
    GenEvaluate("const QxImagerHidden &i_hiddens, QxVar* i_visibles");
}

void SlcGenCCode::GenEvaluateLightShader()
{
    GenEvaluate("const QxLightHidden &i_hiddens, QxVar* i_visibles, bool i_shadows");
}

void SlcGenCCode::GenEvaluateDisplacementShader()
{
    GenEvaluate("const QxSurfaceHidden &i_hiddens, QxVar* i_visibles");
}

void SlcGenCCode::GenEvaluate(const char* parameters)
{
    Line(Generated::sm_slcPrefixFunc, Generated::sm_slcEvaluateFuncName,
         "(unsigned int numMpU, unsigned int numMpV, const QxShadingContext &i_context, ",
         parameters, ")");
    Line("{");
    Line("\tQxShaderSupport *shaderSupport = i_context.ShaderSupport();");
    if (IsLitShader())
        Line("\tbool ", Generated::sm_flagEvalLightForP, " = true;");
    Line("\t", Generated::sm_localUniformStructName, " u;");
    Line("\t", Generated::sm_localVaryingStructName, " v;");
    Line("\tunsigned int numMp = numMpU * numMpV;");
    if (IsLitShader() && m_initAtShadeTime)
        Line("\t", Generated::sm_slcInitializeAtShadeTimeFuncName,
             "(i_context, i_visibles, i_hiddens, numMpU, numMpV, numMp",
             UsesLightsAtShadeTime() ? ", i_numLights, i_lights);" : ");");
    if (m_options->m_createLocalVars)
        Line("\tCreateLocalVars(&u, &v, numMp);");
    Line("\tunsigned int ", Generated::sm_polygonCounter, ";");
    if (!m_form->m_shaderType->IsLight())
        Line("\tunsigned int ", Generated::sm_lightCounter, " = 0;");
    Line();
    m_statements.PrintListICode(*m_form->m_mainList);
    Line();
    if (m_options->m_createLocalVars)
        Line("\tDestroyLocalVars(&u, &v, numMp);");
    Line("}");
}
