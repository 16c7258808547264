#pragma once

#include <string>
#include <string_view>
#include <vector>

// Rules of makefiles without commands, which list the files that an output depends on.

/// The programs that read rules. GNU make reads `\:` as a colon; ninja and CMake read a plain one,
/// and older versions of them no other.
enum class SqxRuleReader { Make, Ninja };

/// Returns a file on which something depends as a word of a rule. Make and ninja end a name at some
/// characters and offer no escape for them: both at a line break, ninja also at `'` and others.
[[nodiscard]] std::string SqxMakeWord(const std::string& path, SqxRuleReader reader);
/// Returns the target of a rule as a word.
[[nodiscard]] std::string SqxMakeTarget(const std::string& path, SqxRuleReader reader);

/// True for a path with a line break, which no rule can name.
[[nodiscard]] bool SqxHasLineBreak(std::string_view path);
/// True if all versions of ninja read the word of this path as the path.
[[nodiscard]] bool SqxNinjaReads(std::string_view path);

/// Returns a rule: the targets, which are words, depend on the files. Ends with a newline.
[[nodiscard]] std::string SqxMakeRule(const std::vector<std::string>& targets,
                                      const std::vector<std::string>& files, SqxRuleReader reader);
