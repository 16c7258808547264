#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// A program to run as a child, and what it sees.
struct SqxCommand {
    std::vector<std::string> words;  // the first is a path, or a name that `PATH` finds
    std::filesystem::path folder;    // to run in; empty: this one
    std::filesystem::path output;    // file for all that it prints; empty: where ours goes
    std::vector<std::pair<std::string, std::string>> variables;  // beside those of our environment
    /// Gets each line of what the program prints on both streams, in place of `output`.
    std::function<void(const std::string& line)> onLine = nullptr;
    /// Looked at every millisecond, if it is there: the program, with all that it started, is ended
    /// once the answer is true.
    std::function<bool()> isOver = nullptr;
};

/// Runs the program and waits for it. Gives its exit status, 128 and the number of the signal if
/// one ended it, or 127 if it could not be started. No shell comes in between: words reach the
/// program as they are. Several threads may run programs at a time.
[[nodiscard]] int SqxRunCommand(const SqxCommand& command);

/// The program of that name in the folder of the running one.
[[nodiscard]] std::filesystem::path SqxProgramBeside(const std::string& name);

/// `text` as one word of the shell, in quotes where it needs some: for a command that users see or
/// that a shell reads.
[[nodiscard]] std::string SqxShellWord(const std::string& text);
