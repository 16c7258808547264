#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "compiler/QxSourceIndex.h"

// The names that the language defines, from the compiler's tables, for editors.

/// The overloads of all built-in functions, by name; each is of kind `BuiltIn`, with its result,
/// its formals and its declaration. The texture accesses are among them.
[[nodiscard]] const std::vector<QxIndexedName>& QxBuiltInFunctions();

/// The predefined variables of a kind of shader ("surface"), in the order of the manual, with type,
/// detail and storage. Empty for a word that is no kind.
[[nodiscard]] std::vector<QxIndexedName> QxPredefinedVariables(std::string_view shaderKind);
/// The constant of all kinds, `PI`.
[[nodiscard]] QxIndexedName QxPredefinedConstant();
/// Those that the body of a light loop has besides.
[[nodiscard]] std::vector<QxIndexedName> QxLightLoopVariables();

/// The purpose of a keyword.
enum class QxWordKind { Shader, Detail, Type, Statement, Texture };
struct QxWord {
    std::string_view word;
    QxWordKind kind;
};
/// The words that the language keeps for itself.
[[nodiscard]] std::vector<QxWord> QxKeywords();
