#pragma once

#include <span>
#include <string_view>

#include "driver/SlcCommandLine.h"

/// The arguments that are left, the current one first.
class SlcArgumentList {
public:
    explicit SlcArgumentList(std::span<const char* const> arguments) : m_rest(arguments) {}
    [[nodiscard]] bool Empty() const { return m_rest.empty(); }
    [[nodiscard]] std::string_view Front() const { return m_rest.front(); }
    void Pop() { m_rest = m_rest.subspan(1); }

private:
    std::span<const char* const> m_rest;
};

/// An option of the compiler: its effect on the command line, and the texts of `--help`, the manual
/// page, the completion of command lines, and the table in README.md.
struct SlcOptionRow {
    /// The option's argument is first in the list; an effect that takes a further one pops the
    /// first. `value` is the row's. False after a reported fault.
    using Effect = bool (*)(SlcCommandLine&, SlcArgumentList&, int value);

    std::string_view
        words;  // all spellings: "-O2, -O"; a value in capitals may follow "-I" and "-D"
    std::string_view argument;  // the word that follows, such as "DIR"; empty if none does
    std::string_view meaning;   // one sentence without a capital and a full stop
    std::string_view usage;     // lines of `--help`
    Effect effect;              // null for an option that is only valid alone
    int value;                  // of the first spelling; "--dont-..." has the opposite
};

/// In the order of `--help`.
[[nodiscard]] std::span<const SlcOptionRow> SlcOptionRows();

enum class SlcOptionResult { Done, Failed, NoOption };

/// Runs the effect of the option that the first argument is, if it is one.
[[nodiscard]] SlcOptionResult SlcReadOption(SlcCommandLine& line, SlcArgumentList& arguments);
