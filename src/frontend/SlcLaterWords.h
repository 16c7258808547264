#pragma once

#include <string>
#include <string_view>

/// Returns advice on a word of a later revision of the language, such as "class"; empty for any
/// other. Such a word is a valid name here, so use the advice only after an error.
[[nodiscard]] std::string_view SlcAdviceOnLaterWord(std::string_view word);

/// True if the word begins a definition there, whose body is in braces.
[[nodiscard]] bool SlcOpensLaterDefinition(std::string_view word);

/// Returns advice on an unknown function, such as "bake3d"; empty for a name that is not a function
/// of a later revision either.
[[nodiscard]] std::string SlcAdviceOnLaterFunction(std::string_view name);
