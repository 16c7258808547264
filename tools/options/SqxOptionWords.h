#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "options/SqxOptionTable.h"

/// Words on the command line that make no sense; the text says why. A program prints it and ends
/// with status 2.
class SqxUsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Walks over the words of a command line, as all programs beside the compiler read it, see
/// `SqxReadWords`.
///
/// A word that begins with '-' is an option, unless it is '-' alone, which means a standard stream.
/// The word '--' ends the options and is passed over: files may be called as they like.
class SqxOptionWords {
public:
    /// The words without the name of the program. They must outlive the walk.
    explicit SqxOptionWords(const std::vector<std::string>& words) : m_words(words) {}

    /// Advances to the next word, at first to the first one. False after the last word.
    [[nodiscard]] bool Next();

    /// The current word. Only after a `Next` that was true.
    [[nodiscard]] const std::string& Word() const { return m_words[m_position]; }
    [[nodiscard]] bool IsOption() const;

    /// Whether the word is one of these spellings: "-h, --help".
    [[nodiscard]] bool Is(std::string_view spellings) const;

    /// The value of an option, if the word is this option, or nothing. The value is glued to it,
    /// as in "-IDIR" and "--size=8x8", or else it is the next word, whatever that looks like; it is
    /// then the current word. Throws `SqxUsageError` if it is missing or empty; `what` names the
    /// expected value in the report.
    [[nodiscard]] std::optional<std::string> Value(std::string_view option, std::string_view what);

    /// Whether the word asks for the help or the version, which is noted.
    [[nodiscard]] bool AsksFor(SqxInformation& information) const;

    /// Throws the `SqxUsageError` of an option that there is not.
    [[noreturn]] void RefuseWord() const;

private:
    const std::vector<std::string>& m_words;
    std::size_t m_position = 0;
    bool m_isBegun = false;
    bool m_optionsEnd = false;  // after "--"
};

/// Reads a whole command line: `readOption` asks `Is` and `Value` for each option that there is,
/// and `readFile` gets the words that are none.
void SqxReadWords(const std::vector<std::string>& arguments,
                  const std::function<void(SqxOptionWords&)>& readOption,
                  const std::function<void(const std::string&)>& readFile);

/// A whole number from 1 to `most`. Throws the `SqxUsageError` "The `what` must be ...".
[[nodiscard]] int SqxReadNumber(const std::string& text, int most, const std::string& what);
