#pragma once

#include <string>

/// The default shell commands. That of the C++ compiler runs if the environment sets none; that of
/// the preprocessor is only printed, since the library preprocesses by default. Words with a dollar
/// sign are environment variables, set by the driver or by the user.

/// Returns `text` as one word for the shell, in quotes if it needs them.
[[nodiscard]] std::string SlcShellWord(const std::string& text);

/// Returns the command for a program that does the same as the built-in preprocessor.
[[nodiscard]] std::string DefaultPreprocessCommand();

/// Returns the command for the C++ compiler. The compiler finds the run time's header in the
/// installed tree if this program runs from one, otherwise in the source tree of this program.
[[nodiscard]] std::string DefaultCCCommand();
