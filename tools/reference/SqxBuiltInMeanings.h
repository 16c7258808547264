#pragma once

#include <span>
#include <string_view>

/// What a built-in function does, as a phrase for users of the language.
struct SqxBuiltInMeaning {
    std::string_view name;
    std::string_view group;  // heading above it on the reference page
    std::string_view meaning;
};

/// Returns the units, ranges, requirements, defaults and border cases of a function as Markdown;
/// empty if there is nothing to add to its meaning.
[[nodiscard]] std::string_view SqxBuiltInDetails(std::string_view function);

/// Returns what a predefined variable contains; empty for an unknown one.
[[nodiscard]] std::string_view SqxPredefinedMeaning(std::string_view variable);

/// Returns each built-in function once, in the order of the reference page.
[[nodiscard]] std::span<const SqxBuiltInMeaning> SqxBuiltInMeanings();
