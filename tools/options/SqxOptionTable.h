#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

// The description of a program is written once, as tables, from which its `--help` (except that of
// the compiler), manual page and command line completion are generated. All texts are literals.

/// A row of the table of options: an option, or several options with one text, and their effect.
/// The rows are in the order of the help text.
struct SqxOption {
    std::string_view word;      // all spellings or options: "--size", "-h, --help", "-w0, -w1, -w2"
    std::string_view argument;  // such as "DIR"; empty if there is none, or it is part of `word`
    std::string_view effect;    // a phrase or a sentence, without a full stop at its end
};

/// A word and its meaning: an environment variable, a file, an exit status, or an example, which is
/// a whole command.
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

/// Returns the spellings in `words`, the `word` of a row: for "-h, --help" both "-h" and "--help",
/// as parts of the given text.
[[nodiscard]] std::vector<std::string_view> SqxSpellings(std::string_view words);

/// Returns the text that `--help` prints: the line "Usage: ...", then the description and the
/// options, wrapped at 100 characters.
[[nodiscard]] std::string SqxHelpText(const SqxProgram& program);

/// Prints the requested information, or nothing for `None`, to standard output. Returns the exit
/// status: 0, or 1 if the information could not be printed.
[[nodiscard]] int SqxPrintInformation(const SqxProgram& program, SqxInformation information);
