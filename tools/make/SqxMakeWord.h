#pragma once

#include <string>
#include <vector>

/// Returns a path as a word of a makefile, with blanks, `#` and `$` escaped.
[[nodiscard]] std::string SqxMakeWord(const std::string& path);

/// Returns a rule without a command: the targets, which are not escaped, depend on the files. Ends
/// with a newline.
[[nodiscard]] std::string SqxMakeRule(const std::vector<std::string>& targets,
                                      const std::vector<std::string>& files);
