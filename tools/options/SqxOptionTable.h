#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

// The description of a program is written once, as tables, from which its `--help` (except that of
// the compiler), manual page and command line completion are generated. All texts are literals.

/// One option of a program: its text on the command line, and its effect. The options of a program
/// are in the order of its help text.
struct SqxOption {
    std::string_view word;      // "--size", or all spellings: "-o, --output"
    std::string_view argument;  // such as "DIR"; empty if it has none
    std::string_view effect;    // one sentence without capital letter and full stop
};

/// A word and its meaning: an environment variable, a file, an exit status, an example.
struct SqxEntry {
    std::string_view word;
    std::string_view meaning;
};

/// The description of a program for its `--help`, its manual page and the completion of its command
/// line.
struct SqxProgram {
    std::string_view name;
    std::string_view purpose;                       // one phrase, as in the head of a manual page
    std::string_view synopsis;                      // arguments after the name on the command line
    std::span<const std::string_view> description;  // paragraphs
    std::span<const SqxOption> options;
    std::span<const SqxEntry> environment;
    std::span<const SqxEntry> files;
    std::span<const SqxEntry> statuses;
    std::span<const SqxEntry> examples;  // command, and its effect
    std::string_view fileEndings;        // of its input files, for completion: "sl sqx"
};

/// Information that a program prints instead of doing its work.
enum class SqxInformation { None, Help, Version };

/// Returns the spellings in the `word` of an option: for "-o, --output" both "-o" and "--output",
/// as parts of the given text.
[[nodiscard]] std::vector<std::string_view> SqxSpellings(std::string_view words);

/// Returns "Usage: ...", the description and the options, as `--help` prints them, wrapped at 100
/// characters.
[[nodiscard]] std::string SqxHelpText(const SqxProgram& program);

/// Prints the requested information to standard output. Returns the exit status: 0, or 1 if the
/// information could not be printed.
[[nodiscard]] int SqxPrintInformation(const SqxProgram& program, SqxInformation information);
