#pragma once

#include <string>

/// Shell commands for when the environment gives none. The words with a dollar sign are variables
/// of the environment, which the driver sets, or which are the user's own.

/// `text` as one word of the shell.
[[nodiscard]] std::string SlcShellWord(const std::string& text);

/// Runs the program that does what the compiler does by itself where no command is given.
[[nodiscard]] std::string DefaultPreprocessCommand();

/// Finds the run-time's header in the installed tree if the program runs from one, and else in
/// the source tree that it was built from.
[[nodiscard]] std::string DefaultCCCommand();
