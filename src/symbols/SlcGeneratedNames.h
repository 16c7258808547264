#pragma once

#include <string_view>

#include "sqx/SqxPredefined.h"

/// The names by which generated code accesses what the run time passes to it. The operand of a
/// predefined variable has the variable's accessor as its name, so later stages recognize it.
namespace SlcGeneratedNames {

inline constexpr const char* k_hiddenPrefix = "i_hiddens";
inline constexpr const char* k_contextVarName = "i_context";
inline constexpr const char* k_pointType = "QxVector3";
inline constexpr const char* k_lightPrefix = "i_lights";
inline constexpr const char* k_lightCounter = "lightCnt";
inline constexpr const char* k_pi = k_sqxPi.accessor;

/// Returns the accessor of a predefined variable.
consteval const char* AccessorOf(std::string_view name)
{
    for (const SqxPredefined& row : k_sqxPredefined)
        if (name == row.name)
            return row.accessor;
    throw name;  // not a predefined variable
}

// The predefined variables that code generation looks up by name.
inline constexpr const char* k_P = AccessorOf("P");
inline constexpr const char* k_du = AccessorOf("du");
inline constexpr const char* k_dv = AccessorOf("dv");

}  // namespace SlcGeneratedNames
