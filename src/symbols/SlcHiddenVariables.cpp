#include "symbols/SlcHiddenVariables.h"

#include <string>

#include "support/SlcDiagnostics.h"

namespace {

using VarInfo = SlcHiddenVariables::VarInfo;
using T = SlcTypeNode;
using D = SlcDetailNode;

// clang-format off
//   name      type         detail        accessor
constexpr VarInfo k_hiddens[] = {
    {"Cs",     T::AColor,   D::AVarying,  "i_hiddens.GetCs()"},
    {"Os",     T::AColor,   D::AVarying,  "i_hiddens.GetOs()"},
    {"P",      T::APoint,   D::AVarying,  "i_hiddens.GetP()"},
    {"dPdu",   T::AVector,  D::AVarying,  "i_hiddens.GetDPdu()"},
    {"dPdv",   T::AVector,  D::AVarying,  "i_hiddens.GetDPdv()"},
    {"N",      T::ANormal,  D::AVarying,  "i_hiddens.GetN()"},
    {"Ng",     T::ANormal,  D::AVarying,  "i_hiddens.GetNg()"},
    {"u",      T::AFloat,   D::AVarying,  "i_hiddens.GetU()"},
    {"v",      T::AFloat,   D::AVarying,  "i_hiddens.GetV()"},
    {"du",     T::AFloat,   D::AVarying,  "i_hiddens.GetDu()"},
    {"dv",     T::AFloat,   D::AVarying,  "i_hiddens.GetDv()"},
    {"s",      T::AFloat,   D::AVarying,  "i_hiddens.GetS()"},
    {"t",      T::AFloat,   D::AVarying,  "i_hiddens.GetT()"},
    {"L",      T::AVector,  D::AVarying,  "i_hiddens.GetL()"},
    {"Cl",     T::AColor,   D::AVarying,  "i_hiddens.GetCl()"},
    {"Ol",     T::AColor,   D::AVarying,  "i_hiddens.GetOl()"},
    {"E",      T::APoint,   D::AUniform,  "(QxVector3*)i_context.Eye()"},
    {"I",      T::AVector,  D::AVarying,  "i_hiddens.GetI()"},
    {"ncomps", T::AFloat,   D::AUniform,  "i_hiddens.GetNcomps()"},
    {"time",   T::AFloat,   D::AUniform,  "i_hiddens.GetTime()"},
    {"Ci",     T::AColor,   D::AVarying,  "i_hiddens.GetCi()"},
    {"Oi",     T::AColor,   D::AVarying,  "i_hiddens.GetOi()"},
    {"Ps",     T::APoint,   D::AVarying,  "i_hiddens.GetPs()"},
    {"alpha",  T::AFloat,   D::AVarying,  "i_hiddens.GetAlpha()"},
};

constexpr VarInfo k_illuminance[] = {
    {"L",      T::AVector,  D::AVarying,  "(i_lights[lightCnt].L)"},
    {"Cl",     T::AColor,   D::AVarying,  "(i_lights[lightCnt].Cl)"},
    {"Ol",     T::AColor,   D::AVarying,  "(i_lights[lightCnt].Ol)"},
};
// clang-format on

const VarInfo* FindOrNull(std::span<const VarInfo> variables, std::string_view name)
{
    for (const VarInfo& variable : variables)
        if (variable.name == name)
            return &variable;
    return nullptr;
}

const VarInfo& Find(std::span<const VarInfo> variables, std::string_view name, const char* function)
{
    if (const VarInfo* variable = FindOrNull(variables, name))
        return *variable;
    FatalError("No hidden variable named '" + std::string(name) + "' in " + function + " function");
}

}  // namespace

const VarInfo& SlcHiddenVariables::GetVarInfoHidden(std::string_view name)
{
    return Find(k_hiddens, name, "SlcHiddenVariables::GetVarInfoHidden");
}

const VarInfo* SlcHiddenVariables::FindVarInfoHidden(std::string_view name)
{
    return FindOrNull(k_hiddens, name);
}

const VarInfo& SlcHiddenVariables::GetVarInfoIlluminance(std::string_view name)
{
    return Find(k_illuminance, name, "SlcHiddenVariables::GetVarInfoIlluminance");
}
