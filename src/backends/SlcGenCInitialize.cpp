// Default values of parameters: those known when an instance is made, and those that need shading
// data, which hold zero until a grid is shaded.
//
//     float Kd = 0.5         QxInitialize: QxInitVarValue(i_visibles[INDEX_Kd], "", ..., &temp)
//     float n = noise(s)     QxInitialize: zero; QxInitializeAtShadeTime, at the start of
//     QxEvaluate:
//                            CALL_PRIM_NOISE_FLOAT_1D(...) for each point
//
// A value that the user has given is left alone (UseDefaultValue).
//
// Tested by tests/backends/CFileTest.cpp, ComputesArraysAndStringsAtShadeTime and others.

#include <algorithm>

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
    Line("\ttypedef struct {");
    for (const SlcParameterInfo& parameter : m_form->m_parameters) {
        if (parameter.initDependsOnContext)
            m_initAtShadeTime = true;
        else
            for (const SlcOperand& local : parameter.initList->m_usedLocalVars)
                GenInitLocal(local);
    }
    Line("\t} QxLocalInitUniform;");
    Line("\tQxLocalInitUniform u;");
    Line("\tmemset(&u, 0, sizeof(QxLocalInitUniform));");
    Line();
    for (std::size_t i = 0; i < count; ++i) {
        Line("\tif (", Visible(i), ".UseDefaultValue()) {");
        if (m_form->m_parameters[i].initDependsOnContext)
            GenShadeTimePlaceholder(i);
        else
            GenDefaultValue(i);
        Line("\t}");
    }
    for (const SlcParameterInfo& parameter : m_form->m_parameters)
        if (!parameter.initDependsOnContext)
            for (const SlcOperand& local : parameter.initList->m_usedLocalVars)
                FreeStrings(local, "\tFREE_STRING((char*) u.", "FREE_STRING((char*)v.");
    Line("}");
}

void SlcGenCCode::GenInitLocal(const SlcOperand& local)
{
    const SlcTypeNode* type = local->GetType();
    if (type->IsArrayRefType()) {
        type = static_cast<const SlcArrayRefTypeNode*>(type)->GetElementType();
        Line("\t\t", m_types.GetString(type), " *", local->GetName(), ";");
    } else if (IsArray(local)) {
        Line("\t\t", ElementTypeText(local), " ", local->GetName(), "[", ElementCount(local), "];");
    } else {
        Line("\t\t", ElementTypeText(local), " ", local->GetName(), ";");
    }
}

void SlcGenCCode::GenDefaultValue(std::size_t parameter)
{
    const SlcParameterInfo& info = m_form->m_parameters[parameter];
    PrintListICode(*info.initList);
    const SlcOperand& value = info.initValues.front();
    const std::string text = m_values.GetString(value);
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
    const int floats = SizeOf({variable}).floats;
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

/// The names of the parameters are those of the evaluate functions, so that its body reads as one
/// of theirs.
void SlcGenCCode::GenInitializeAtShadeTime()
{
    Locals locals;
    for (const SlcParameterInfo& parameter : m_form->m_parameters)
        if (parameter.initDependsOnContext)
            AddLocals(*parameter.initList, locals);

    const bool usesLights = UsesLightsAtShadeTime();
    // Nothing calls it in a shader of another kind.
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
    GenShadeTimeLocals(locals);
    for (std::size_t i = 0; i < m_form->m_parameters.size(); ++i)
        if (m_form->m_parameters[i].initDependsOnContext)
            GenShadeTimeValue(i);
    for (const auto* group : {&locals.uniform, &locals.varying})
        for (const SlcOperand& local : *group)
            FreeStrings(local, "\t\tFREE_STRING((char*)u.", "FREE_STRING((char*)v.");
    if (!locals.varying.empty())
        Line("\tfree(initPtr);");
    Line("}");
}

void SlcGenCCode::GenShadeTimeLocals(const Locals& locals)
{
    Line("\ttypedef struct {");
    for (const SlcOperand& local : locals.uniform)
        GenInitLocal(local);
    Line("\t} QxLocalInitUniform;");
    Line("\tQxLocalInitUniform u;");
    Line("\tmemset(&u, 0, sizeof(QxLocalInitUniform));");
    Line("\ttypedef struct {");
    for (const SlcOperand& local : locals.varying)
        Line("\t\t", ElementTypeText(local), " *", local->GetName(), ";");
    Line("\t} QxLocalInitVarying;");
    Line("\tQxLocalInitVarying v;");
    if (locals.varying.empty())
        return;

    const PointSize size = SizeOf(locals.varying);
    m_out << "\tchar *ptr = (char*)calloc(numMp, " << size.floats << " * sizeof(float)";
    if (size.strings > 0)
        m_out << " + " << size.strings << " * sizeof(const char *)";
    Line(");");
    Line("\tchar *initPtr = ptr;");
    for (const SlcOperand& local : InBlockOrder(locals.varying)) {
        const std::string type = ElementTypeText(local);
        Line("\tv.", local->GetName(), " = (", type, "*)ptr;");
        m_out << "\tptr += numMp * sizeof(" << type;
        if (IsArray(local))
            m_out << '[' << ElementCount(local) << ']';
        Line(");");
    }
}

void SlcGenCCode::GenShadeTimeValue(std::size_t parameter)
{
    const SlcOperand& variable = Parameter(parameter);
    const SlcOperand& value = m_form->m_parameters[parameter].initValues.front();
    Line("\tif (", Visible(parameter), ".UseDefaultValue()) {");
    PrintListICode(*m_form->m_parameters[parameter].initList);
    if (!IsArray(variable))
        GenShadeTimeAssign(variable, value, nullptr);
    else
        for (int k = 0; k < ElementCount(variable); ++k)
            GenShadeTimeAssign(variable, value, SlcLexType::Float(k));
    Line("\t}");
}

/// `index` names the element of two arrays; null for a single value.
void SlcGenCCode::GenShadeTimeAssign(const SlcOperand& dest, const SlcOperand& source,
                                     const SlcOperand& index)
{
    const auto grid = [&](const SlcOperand& operand) {
        return index ? m_values.GetStringArray(operand, index) : m_values.GetStringSIMD(operand);
    };
    const auto point = [&](const SlcOperand& operand) {
        if (!index)
            return m_values.GetString(operand);
        const std::string element = m_values.GetStringArray(operand, index);
        return operand->IsUniform() ? "*(" + element + ")" : element + "[polyCnt]";
    };
    const std::string assign = AssignFuncName(ElementType(dest), ElementType(source));
    if (assign.empty())
        Fatal("Invalid type in SlcGenCCode::AssignFuncName");
    if (dest->IsUniform())
        Line("\t", assign, "(", point(dest), ", ", point(source), ");");
    else if (source->IsUniform())
        WriteForEachPoint(assign + "(" + point(dest) + ", " + point(source) + ");");
    else
        Line("\t", assign, "_SIMD(", grid(dest), ", ", grid(source), ");");
}
