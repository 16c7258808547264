#pragma once

#include <span>
#include <string_view>

#include "driver/SlcCommandLine.h"

/// The remaining arguments, the current one first.
class SlcArgumentList {
public:
    explicit SlcArgumentList(std::span<const char* const> arguments) : m_rest(arguments) {}
    [[nodiscard]] bool Empty() const { return m_rest.empty(); }
    [[nodiscard]] std::string_view Front() const { return m_rest.front(); }
    void Pop() { m_rest = m_rest.subspan(1); }

private:
    std::span<const char* const> m_rest;
};

/// An option of the compiler: its effect on the command line, and its texts for `--help`, the
/// manual page, command-line completion, and the table in README.md.
struct SlcOptionRow {
    /// Executes the option, which is the first in the list. If the next word is its argument, pops
    /// the option, so that the argument becomes the first. False after a reported fault.
    using Effect = bool (*)(SlcCommandLine&, SlcArgumentList&, int value);

    std::string_view
        words;  // all spellings: "-O2, -O"; after "-I" and "-D", a word stands for the value
    std::string_view argument;  // the next word, such as "DIR"; empty if the option has none
    std::string_view meaning;   // a phrase with a small initial letter and no final full stop
    std::string_view usage;     // lines of `--help`
    Effect effect;              // null for an option that is only valid alone
    int value;                  // passed to `effect`; the spelling "--dont-..." passes the opposite
};

/// Returns the options in the order of `--help`.
[[nodiscard]] std::span<const SlcOptionRow> SlcOptionRows();

enum class SlcOptionResult { Done, Failed, NoOption };

/// Executes the first argument if it is an option, and leaves the last word of the option in the
/// list. `Failed` after a reported fault. `NoOption` if no row matches, and for an option that is
/// only valid alone.
[[nodiscard]] SlcOptionResult SlcReadOption(SlcCommandLine& line, SlcArgumentList& arguments);
