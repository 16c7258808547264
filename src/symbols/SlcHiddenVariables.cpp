// The predefined variables with the nodes of their types. Their table is derived from the rows that
// all readers of compiled shaders share (runtime/sqx/SqxPredefined.h). The variables of light loops
// have a separate table, since they are accessed through the current light.
//
// Tested by tests/symbols/SlcShaderSymbolTableTest.cpp.

#include "symbols/SlcHiddenVariables.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>

#include "sqx/SqxPredefined.h"
#include "support/SlcDiagnostics.h"

namespace {

using VarInfo = SlcHiddenVariables::VarInfo;
using T = SlcTypeNode;
using D = SlcDetailNode;

struct TypeNode {
    SqxType type;
    SlcTypeNode* (*node)();
};

constexpr TypeNode k_typeNodes[] = {
    {SqxType::Float, T::AFloat},   {SqxType::Color, T::AColor},   {SqxType::Point, T::APoint},
    {SqxType::Vector, T::AVector}, {SqxType::Normal, T::ANormal},
};

constexpr VarInfo MakeInfo(const SqxPredefined& row)
{
    for (const TypeNode& candidate : k_typeNodes)
        if (candidate.type == row.type)
            return {row.name, candidate.node, row.uniform ? D::AUniform : D::AVarying,
                    row.accessor};
    throw row.type;  // not a type of a predefined variable
}

constexpr auto k_hiddens = [] {
    std::array<VarInfo, std::size(k_sqxPredefined)> infos{};
    std::transform(std::begin(k_sqxPredefined), std::end(k_sqxPredefined), infos.begin(), MakeInfo);
    return infos;
}();

constexpr VarInfo k_pi = MakeInfo(k_sqxPi);

// clang-format off
//   name      type         detail        accessor
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

std::span<const VarInfo> SlcHiddenVariables::All()
{
    return k_hiddens;
}

const VarInfo& SlcHiddenVariables::Pi()
{
    return k_pi;
}

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

std::span<const VarInfo> SlcHiddenVariables::AllOfIlluminance()
{
    return k_illuminance;
}

const VarInfo* SlcHiddenVariables::FindVarInfoIlluminance(std::string_view name)
{
    return FindOrNull(k_illuminance, name);
}
