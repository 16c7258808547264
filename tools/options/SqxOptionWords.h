#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "options/SqxOptionTable.h"

/// Thrown for invalid words on the command line. The text says why; a program prints it and exits
/// with status 2.
class SqxUsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Iterates over the words of a command line, for all programs except the compiler. Most of them
/// call `SqxReadWords`, which runs the iteration.
///
/// A word that begins with '-' is an option, unless it is '-' alone, which means a standard stream.
/// The word '--' ends the options and is skipped: later words are not options, so that names of
/// files may start with '-'.
class SqxOptionWords {
public:
    /// `words` are those after the name of the program. They must outlive this object.
    explicit SqxOptionWords(const std::vector<std::string>& words) : m_words(words) {}

    /// Advances to the next word, at first to the first one, and past '--'. Returns false after the
    /// last word.
    [[nodiscard]] bool Next();

    /// Returns the current word. May be called only after `Next` has returned true.
    [[nodiscard]] const std::string& Word() const { return m_words[m_position]; }
    [[nodiscard]] bool IsOption() const;

    /// True if the word is one of these spellings, such as "-h, --help".
    [[nodiscard]] bool Is(std::string_view spellings) const;

    /// Returns the value of an option if the word is this option, or nothing. The value is part of
    /// the word, as in "-IDIR" and "--size=8x8"; otherwise it is the next word, which becomes the
    /// current one. Throws `SqxUsageError` if it is missing or empty; `what` names the expected
    /// value.
    [[nodiscard]] std::optional<std::string> Value(std::string_view option, std::string_view what);

    /// True if the word asks for the help or the version; then sets `information`.
    [[nodiscard]] bool AsksFor(SqxInformation& information) const;

    /// Throws the `SqxUsageError` for an unknown option.
    [[noreturn]] void RefuseWord() const;

private:
    const std::vector<std::string>& m_words;
    std::size_t m_position = 0;
    bool m_isBegun = false;
    bool m_optionsEnd = false;  // after "--"
};

/// Reads a whole command line: calls `readOption` for each option, which is then the current word,
/// and `readFile` for each other word that `readOption` has not taken as the value of an option.
void SqxReadWords(const std::vector<std::string>& arguments,
                  const std::function<void(SqxOptionWords&)>& readOption,
                  const std::function<void(const std::string&)>& readFile);

/// Reads a whole number from 1 to `most`. Throws the `SqxUsageError` "The `what` must be ...".
[[nodiscard]] int SqxReadNumber(const std::string& text, int most, const std::string& what);
