#pragma once

#include <string_view>

#include "sqx/SqxPredefined.h"

/// Names in generated C++. The accessor of a predefined variable is the expression for it in
/// generated C++. It is also the name of the variable's operand, so later stages recognize the
/// variable.
namespace SlcGeneratedNames {

inline constexpr const char* k_hiddenPrefix = "i_hiddens";
inline constexpr const char* k_contextVarName = "i_context";
inline constexpr const char* k_pointType = "QxVector3";
inline constexpr const char* k_lightPrefix = "i_lights";
inline constexpr const char* k_lightCounter = "lightCnt";
inline constexpr const char* k_pi = k_sqxPi.accessor;

/// Returns the accessor of a predefined variable. With another name, the call does not compile.
consteval const char* AccessorOf(std::string_view name)
{
    for (const SqxPredefined& row : k_sqxPredefined)
        if (name == row.name)
            return row.accessor;
    throw name;  // not a predefined variable
}

// The accessors of variables that the lowering and the C++ writer treat specially.
inline constexpr const char* k_P = AccessorOf("P");
inline constexpr const char* k_du = AccessorOf("du");
inline constexpr const char* k_dv = AccessorOf("dv");

}  // namespace SlcGeneratedNames
