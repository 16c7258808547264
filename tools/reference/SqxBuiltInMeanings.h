#pragma once

#include <span>
#include <string_view>

/// What a built-in function does, in a phrase that a user of the language reads.
struct SqxBuiltInMeaning {
    std::string_view name;
    std::string_view group;  // heading under which it is listed
    std::string_view meaning;
};

/// Units, ranges, requirements and borders of a function as Markdown; empty if its meaning says
/// all.
[[nodiscard]] std::string_view SqxBuiltInDetails(std::string_view function);

/// What a predefined variable contains; empty for an unknown one.
[[nodiscard]] std::string_view SqxPredefinedMeaning(std::string_view variable);

/// Each built-in function once, in the order of the reference page.
[[nodiscard]] std::span<const SqxBuiltInMeaning> SqxBuiltInMeanings();
