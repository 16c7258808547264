#pragma once

#include "sqx/SqxType.h"

/// A variable that shaders use without declaring it. A table in QxMachineStore.cpp lists where the
/// host stores their values, in the order of these rows: a new row is appended to both.
struct SqxPredefined {
    const char* name;
    SqxType type;
    bool uniform;
    const char* accessor;  // C++ expression: a pointer to its value or values
};

// clang-format off
//   name       type              uniform  accessor
inline constexpr SqxPredefined k_sqxPredefined[] = {
    {"Cs",      SqxType::Color,   false,   "i_hiddens.GetCs()"},
    {"Os",      SqxType::Color,   false,   "i_hiddens.GetOs()"},
    {"P",       SqxType::Point,   false,   "i_hiddens.GetP()"},
    {"dPdu",    SqxType::Vector,  false,   "i_hiddens.GetDPdu()"},
    {"dPdv",    SqxType::Vector,  false,   "i_hiddens.GetDPdv()"},
    {"N",       SqxType::Normal,  false,   "i_hiddens.GetN()"},
    {"Ng",      SqxType::Normal,  false,   "i_hiddens.GetNg()"},
    {"u",       SqxType::Float,   false,   "i_hiddens.GetU()"},
    {"v",       SqxType::Float,   false,   "i_hiddens.GetV()"},
    {"du",      SqxType::Float,   false,   "i_hiddens.GetDu()"},
    {"dv",      SqxType::Float,   false,   "i_hiddens.GetDv()"},
    {"s",       SqxType::Float,   false,   "i_hiddens.GetS()"},
    {"t",       SqxType::Float,   false,   "i_hiddens.GetT()"},
    {"L",       SqxType::Vector,  false,   "i_hiddens.GetL()"},
    {"Cl",      SqxType::Color,   false,   "i_hiddens.GetCl()"},
    {"Ol",      SqxType::Color,   false,   "i_hiddens.GetOl()"},
    {"E",       SqxType::Point,   true,    "(QxVector3*)i_context.Eye()"},
    {"I",       SqxType::Vector,  false,   "i_hiddens.GetI()"},
    {"ncomps",  SqxType::Float,   true,    "i_hiddens.GetNcomps()"},
    {"time",    SqxType::Float,   true,    "i_hiddens.GetTime()"},
    {"Ci",      SqxType::Color,   false,   "i_hiddens.GetCi()"},
    {"Oi",      SqxType::Color,   false,   "i_hiddens.GetOi()"},
    {"Ps",      SqxType::Point,   false,   "i_hiddens.GetPs()"},
    {"alpha",   SqxType::Float,   false,   "i_hiddens.GetAlpha()"},
};
// clang-format on

/// The constant of the language. It exists in every shader, but not in byte-code files, which
/// contain its value as a constant. `QX_PI` is the value itself, not a pointer.
inline constexpr SqxPredefined k_sqxPi = {"PI", SqxType::Float, true, "QX_PI"};
