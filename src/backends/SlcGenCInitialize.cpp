// Default values of parameters: those computed when an instance is made, and those that depend on
// shading data. The latter are zero or empty until a grid is shaded, and computed only in surface
// and volume shaders.
//
//     float Kd = 0.5         QxInitialize: QxInitVarValue(i_visibles[INDEX_Kd], "", ..., &temp)
//     float n = noise(s)     QxInitialize: zero; QxInitializeAtShadeTime, called first by
//                            QxEvaluate: CALL_PRIM_NOISE_FLOAT_1D(...) for each point
//
// A value that the user has set is not overwritten (UseDefaultValue).
//
// Tested by tests/backends/CFileTest.cpp, ComputesArraysAndStringsAtShadeTime and others.

#include <algorithm>

#include "backends/SlcCLocals.h"
#include "backends/SlcGenCCode.h"
#include "backends/SlcGeneratedText.h"
#include "backends/SlcLocalFacts.h"
#include "frontend/SlcShaderTypeNode.h"

using Generated = SlcGeneratedText;

namespace {

bool StartsLights(const SlcPtr<SlcICode>& code)
{
    const SlcICode* instruction = &*code;
    return dynamic_cast<const SlcEvalLightICode*>(instruction) ||
           dynamic_cast<const SlcEvalLightForPICode*>(instruction) ||
           dynamic_cast<const SlcBeginIlluminanceICode*>(instruction);
}

std::string Repeat(const char* text, int count)
{
    std::string list;
    for (int i = 0; i < count; ++i)
        list += (i > 0 ? ", " : "") + std::string(text);
    return list;
}

}  // namespace

void SlcGenCCode::GenInitialize()
{
    const std::size_t count = m_form->m_parameters.size();
    Line(Generated::sm_slcPrefixFunc, Generated::sm_slcInitializeFuncName,
         "(const QxShadingContext &i_context, QxVar *i_visibles,const QxFrame3D **i_spaceList)");
    Line("{");
    Line("\tQxShaderSupport *shaderSupport = i_context.ShaderSupport();");
    Line();
    SlcCLocals locals(m_out);
    for (const SlcParameterInfo& parameter : m_form->m_parameters) {
        if (parameter.initDependsOnContext)
            m_initAtShadeTime = true;
        else
            locals.Add(*parameter.initList);
    }
    locals.GenInstanceLocals();
    for (std::size_t i = 0; i < count; ++i) {
        Line("\tif (", Visible(i), ".UseDefaultValue()) {");
        if (m_form->m_parameters[i].initDependsOnContext)
            GenShadeTimePlaceholder(i);
        else
            GenDefaultValue(i);
        Line("\t}");
    }
    locals.FreeInstanceLocals();
    Line("}");
}

void SlcGenCCode::GenDefaultValue(std::size_t parameter)
{
    const SlcParameterInfo& info = m_form->m_parameters[parameter];
    m_statements.PrintListICode(*info.initList, info.initValues);
    const SlcOperand& value = info.initValues.front();
    const std::string text = m_statements.Values().GetString(value);
    const std::string call = "\tQxInitVarValue(" + Visible(parameter) + ", " +
                             SlcEquCValue::Quote(info.space->GetText()) +
                             ", QxTokenInfo::e_constant, 1, &";
    if (!value->IsFloat() && !value->IsString()) {
        Line(call, text, ");");
        return;
    }
    // A constant has no address.
    Line("\t{");
    Line(value->IsFloat() ? "\tfloat temp = " : "\tconst char *temp = ", text, ";");
    Line(call, "temp);");
    Line("\t}");
}

void SlcGenCCode::GenShadeTimePlaceholder(std::size_t parameter)
{
    const SlcOperand& variable = Parameter(parameter);
    const SlcTypeNode* type = ElementType(variable);
    const std::string call = "\tQxInitVarValue(" + Visible(parameter) + ", ";
    if (type->IsStringType()) {
        Line("\tconst char *temp[] = {", Repeat("\"\"", ElementCount(variable)), "};");
        Line(call, "\"\", QxTokenInfo::e_constant, 1, temp);");
        return;
    }
    const int floats = SlcCLocals::FloatsOf(variable);
    if (type->IsFloatType() && !IsArray(variable))
        Line("\tfloat temp = 0;");
    else
        Line("\tfloat temp[", floats, "] = {", Repeat("0", floats), "};");
    const char* space = type->IsFloatType()   ? "\"\""
                        : type->IsColorType() ? "\"rgb\""
                                              : "\"current\"";
    Line(call, space, ", QxTokenInfo::e_constant, 1, &temp);");
}

bool SlcGenCCode::UsesLightsAtShadeTime() const
{
    for (const SlcParameterInfo& parameter : m_form->m_parameters) {
        const auto& codes = parameter.initList->m_icodes;
        if (parameter.initDependsOnContext && std::any_of(codes.begin(), codes.end(), StartsLights))
            return true;
    }
    return false;
}

/// The parameters of the function that is written have the same names as those of the evaluate
/// function, so that the same statements are valid in both.
void SlcGenCCode::GenInitializeAtShadeTime()
{
    SlcCLocals locals(m_out);
    for (const SlcParameterInfo& parameter : m_form->m_parameters)
        if (parameter.initDependsOnContext)
            locals.Add(*parameter.initList);

    const bool usesLights = UsesLightsAtShadeTime();
    // Only the body of a lit shader calls the function.
    Line(IsLitShader() ? "static void " : "[[maybe_unused]] static void ",
         Generated::sm_slcInitializeAtShadeTimeFuncName,
         "(const QxShadingContext &i_context, QxVar *i_visibles,const QxSurfaceHidden &i_hiddens, "
         "unsigned int numMpU, unsigned int numMpV, unsigned int numMp",
         usesLights ? ", unsigned int i_numLights, QxLightInput *i_lights)" : ")");
    Line("{");
    Line("\tQxShaderSupport *shaderSupport = i_context.ShaderSupport();");
    if (usesLights)
        Line("\tbool ", Generated::sm_flagEvalLightForP, " = true;");
    Line("\tunsigned int polyCnt;");
    if (usesLights)
        Line("\tunsigned int ", Generated::sm_lightCounter, " = 0;");
    Line();
    locals.GenShadeTimeLocals();
    for (std::size_t i = 0; i < m_form->m_parameters.size(); ++i)
        if (m_form->m_parameters[i].initDependsOnContext)
            GenShadeTimeValue(i);
    locals.FreeShadeTimeLocals();
    Line("}");
}

void SlcGenCCode::GenShadeTimeValue(std::size_t parameter)
{
    const SlcOperand& variable = Parameter(parameter);
    const SlcParameterInfo& info = m_form->m_parameters[parameter];
    const SlcOperand& value = info.initValues.front();
    Line("\tif (", Visible(parameter), ".UseDefaultValue()) {");
    m_statements.PrintListICode(*info.initList, info.initValues);
    if (!IsArray(variable))
        GenShadeTimeAssign(variable, value, nullptr);
    else
        for (int k = 0; k < ElementCount(variable); ++k)
            GenShadeTimeAssign(variable, value, SlcLexType::Float(k));
    Line("\t}");
}

/// `index` selects an element of both arrays; null if they are single values.
void SlcGenCCode::GenShadeTimeAssign(const SlcOperand& dest, const SlcOperand& source,
                                     const SlcOperand& index)
{
    SlcEquCValue& values = m_statements.Values();
    const auto grid = [&](const SlcOperand& operand) {
        return index ? values.GetStringArray(operand, index) : values.GetStringSIMD(operand);
    };
    const auto point = [&](const SlcOperand& operand) {
        if (!index)
            return values.GetString(operand);
        const std::string element = values.GetStringArray(operand, index);
        return operand->IsUniform() ? "*(" + element + ")" : element + "[polyCnt]";
    };
    const std::string assign = SlcAssignName(ElementType(dest), ElementType(source));
    if (assign.empty())
        m_statements.Fatal("Invalid type in SlcGenCCode::AssignFuncName");
    if (dest->IsUniform())
        Line("\t", assign, "(", point(dest), ", ", point(source), ");");
    else if (source->IsUniform())
        LineForEachPoint(assign + "(" + point(dest) + ", " + point(source) + ");");
    else
        Line("\t", assign, "_SIMD(", grid(dest), ", ", grid(source), ");");
}
