#pragma once

#include <string>
#include <string_view>

/// Returns advice on a word of a later revision of the language, such as "class"; empty for any
/// other word. Such a word is a valid name here, so use the advice only after an error.
[[nodiscard]] std::string_view SlcAdviceOnLaterWord(std::string_view word);

/// True if the word, in a later revision, begins a definition whose body is in braces.
[[nodiscard]] bool SlcOpensLaterDefinition(std::string_view word);

/// Returns advice on a function that only later revisions have, such as "bake3d"; empty for any
/// other name.
[[nodiscard]] std::string SlcAdviceOnLaterFunction(std::string_view name);
