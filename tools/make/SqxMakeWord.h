#pragma once

#include <string>
#include <vector>

/// A path as makefiles take it: blanks, and what has a meaning there, escaped.
[[nodiscard]] std::string SqxMakeWord(const std::string& path);

/// A rule without a command: the targets, unquoted, depend on the files. Ends with a newline.
[[nodiscard]] std::string SqxMakeRule(const std::vector<std::string>& targets,
                                      const std::vector<std::string>& files);
