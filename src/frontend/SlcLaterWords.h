#pragma once

#include <string>
#include <string_view>

/// Advice on a word of a later revision of the language, such as "class"; empty for any other. Here
/// it is a name like any other, so that it is only of use where something has been refused.
[[nodiscard]] std::string_view SlcAdviceOnLaterWord(std::string_view word);

/// The word begins a definition there, whose body is in braces.
[[nodiscard]] bool SlcOpensLaterDefinition(std::string_view word);

/// Advice on a call that has been refused, such as of "bake3d"; empty for a name that no later
/// revision knows as a function either.
[[nodiscard]] std::string SlcAdviceOnLaterFunction(std::string_view name);
