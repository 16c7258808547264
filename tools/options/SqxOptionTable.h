#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

// The description of a program is written once, as tables: its `--help`, its manual page and the
// completion of its command line are made of them. All texts are literals, which last as long as
// the program.

/// One option of a program: its text on the command line, and its effect. Rows are in the order in
/// which users read them.
struct SqxOption {
    std::string_view word;      // "--size", or both spellings: "-o, --output"
    std::string_view argument;  // what follows, such as "DIR"; empty if nothing does
    std::string_view effect;    // one sentence without a capital and a full stop
};

/// A word and what it means: a variable of the environment, a file, an exit status, an example.
struct SqxEntry {
    std::string_view word;
    std::string_view meaning;
};

/// The description of a program for its `--help`, its manual page and the completion of its command
/// line.
struct SqxProgram {
    std::string_view name;
    std::string_view purpose;   // one phrase, as the head of a manual page has it
    std::string_view synopsis;  // what follows the name on the command line
    std::span<const std::string_view> description;  // paragraphs
    std::span<const SqxOption> options;
    std::span<const SqxEntry> environment;
    std::span<const SqxEntry> files;
    std::span<const SqxEntry> statuses;
    std::span<const SqxEntry> examples;  // command, and what it does
    std::string_view fileEndings;        // of files that it takes, for completion: "sl sqx"
};

/// Information that a program prints instead of doing its work.
enum class SqxInformation { None, Help, Version };

/// The spellings that such a word lists: "-o" and "--output". Parts of the text.
[[nodiscard]] std::vector<std::string_view> SqxSpellings(std::string_view words);

/// "Usage: ...", the description and the options, as `--help` prints them, wrapped at 100
/// characters.
[[nodiscard]] std::string SqxHelpText(const SqxProgram& program);

/// Prints what is asked for to standard output. Returns the exit status, 1 if it could not be
/// printed.
[[nodiscard]] int SqxPrintInformation(const SqxProgram& program, SqxInformation information);
