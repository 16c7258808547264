#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// A program to run as a child process, and its surroundings.
struct SqxCommand {
    std::vector<std::string> words;  // the first is a path, or a name that `PATH` finds
    std::filesystem::path folder;    // working directory; empty: that of this program
    std::filesystem::path output;    // file for both streams; empty: those of this program
    std::vector<std::pair<std::string, std::string>> variables;  // override the environment
    /// If set, called with each line of the output on both streams; `output` must then be empty.
    std::function<void(const std::string& line)> onLine = nullptr;
    /// If set, called every few milliseconds, with `onLine` only while no output waits to be read.
    /// When it returns true, the program and the processes of its group, usually all that it
    /// started, get SIGTERM, and those that still run two seconds later are killed. Once the
    /// program has ended, the rest of the group is killed. If this program ends before the command,
    /// in whatever way, the command gets SIGTERM.
    std::function<bool()> isOver = nullptr;
};

/// Runs the program and waits for it and, with `onLine`, for the end of its output. Returns its
/// exit status, 128 plus the number of the signal if one ended it, or 127 if it could not be
/// started. No shell is involved, so words reach the program unchanged. Several threads may run
/// programs at a time.
[[nodiscard]] int SqxRunCommand(const SqxCommand& command);

/// Returns the path of the program of that name in the folder of the running one, whether it exists
/// or not. Throws `std::filesystem::filesystem_error` if the running program has no known path.
[[nodiscard]] std::filesystem::path SqxProgramBeside(const std::string& name);

/// Returns `text` in single quotes, as one word of the shell, for a command that is shown to users
/// or read by a shell.
[[nodiscard]] std::string SqxShellWord(const std::string& text);
