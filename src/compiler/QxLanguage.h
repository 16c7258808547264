#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "compiler/QxSourceIndex.h"

// The names that the language defines, for editors; derived from the compiler's tables.

/// Returns the overloads of all built-in functions, by name. Each is of kind `BuiltIn`, with its
/// result, formals and declaration. Texture accesses are included.
[[nodiscard]] const std::vector<QxIndexedName>& QxBuiltInFunctions();

/// Returns the predefined variables of a kind of shader ("surface"), in the order of the
/// compiler's table, with type, detail and storage. Empty for an unknown kind.
[[nodiscard]] std::vector<QxIndexedName> QxPredefinedVariables(std::string_view shaderKind);
/// Returns the constant `PI`, which all kinds of shaders have.
[[nodiscard]] QxIndexedName QxPredefinedConstant();
/// Returns the additional variables in the body of a light loop.
[[nodiscard]] std::vector<QxIndexedName> QxLightLoopVariables();

/// The purpose of a keyword.
enum class QxWordKind { Shader, Detail, Type, Statement, Texture };
struct QxWord {
    std::string_view word;
    QxWordKind kind;
};
/// Returns the keywords of the language. Those of kind `Shader` can also be names.
[[nodiscard]] std::vector<QxWord> QxKeywords();
