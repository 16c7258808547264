#pragma once

#include <string>
#include <string_view>
#include <vector>

// Rules of makefiles. They have no commands, but list the files that an output depends on.

/// The programs that read rules; `Ninja` means ninja or CMake. GNU make reads `\:` as a colon.
/// Ninja and CMake read a plain colon, and older versions of them do not read `\:`.
enum class SqxRuleReader { Make, Ninja };

/// Escapes the path of a dependency as a word of a rule. Make and ninja end a name at some
/// characters and offer no escape for them: both at a line break, ninja also at `'` and others.
[[nodiscard]] std::string SqxMakeWord(const std::string& path, SqxRuleReader reader);
/// Escapes a path as the target of a rule.
[[nodiscard]] std::string SqxMakeTarget(const std::string& path, SqxRuleReader reader);

/// True for a path with a line break, which no rule can name.
[[nodiscard]] bool SqxHasLineBreak(std::string_view path);
/// True if all versions of ninja read the path back from its `SqxMakeWord` unchanged.
[[nodiscard]] bool SqxNinjaReads(std::string_view path);

/// Returns a rule that makes `targets`, which are already escaped, depend on `files`, which are
/// paths. Ends with a newline.
[[nodiscard]] std::string SqxMakeRule(const std::vector<std::string>& targets,
                                      const std::vector<std::string>& files, SqxRuleReader reader);
