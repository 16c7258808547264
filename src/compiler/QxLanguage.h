#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "compiler/QxSourceIndex.h"

// The names that the language defines, for editors; derived from the compiler's tables, except the
// forms of texture accesses.

/// Returns the overloads of all built-in functions, sorted by name. Each is of kind `BuiltIn`, with
/// its result, formals and declaration. The usual forms of texture accesses are included. The list
/// is made on the first call.
[[nodiscard]] const std::vector<QxIndexedName>& QxBuiltInFunctions();

/// Returns the predefined variables of a kind of shader ("surface"), in the order of the
/// compiler's table, with type, detail, storage and declaration. Empty for an unknown kind.
[[nodiscard]] std::vector<QxIndexedName> QxPredefinedVariables(std::string_view shaderKind);
/// Returns the constant `PI`, which all kinds of shaders have.
[[nodiscard]] QxIndexedName QxPredefinedConstant();
/// Returns the additional variables in the body of a light loop (`illuminance`).
[[nodiscard]] std::vector<QxIndexedName> QxLightLoopVariables();

/// The purpose of a keyword. `extern` and `output` are of kind `Detail`.
enum class QxWordKind { Shader, Detail, Type, Statement, Texture };
struct QxWord {
    std::string_view word;
    QxWordKind kind;
};
/// Returns the keywords of the language. Those of kind `Shader` can also be names.
[[nodiscard]] std::vector<QxWord> QxKeywords();
