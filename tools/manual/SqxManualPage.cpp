// Manual pages are generated from the tables of `--help`, so that they cannot contradict it. On the
// compiler's page, only the options come from its `--help`. Pages use only a few macros of man(7),
// which common readers support.
//
// Tested by tests/options and by tests/manual/run.sh: a page has each option that `--help` prints.

#include "manual/SqxManualPage.h"

#include <algorithm>
#include <cctype>

#include "options/SqxWrapped.h"

namespace {

constexpr const char* k_date = "2026-11-25";

/// Escapes the characters that have a meaning in man(7): backslashes and dashes, and a dot or a
/// single quote at the start of the text, which may become the start of a line.
[[nodiscard]] std::string Escaped(std::string_view text)
{
    std::string escaped;
    if (text.starts_with('.') || text.starts_with('\''))
        escaped += "\\&";
    for (const char c : text) {
        if (c == '\\')
            escaped += "\\e";
        else if (c == '-')
            escaped += "\\-";
        else
            escaped += c;
    }
    return escaped;
}

/// Returns the spellings in `words`, such as "-o, --output", each in bold.
[[nodiscard]] std::string BoldWords(std::string_view words)
{
    std::string text;
    for (const std::string_view word : SqxSpellings(words))
        text += (text.empty() ? "" : ", ") + ("\\fB" + Escaped(word) + "\\fR");
    return text;
}

/// Escapes the text and breaks it into lines of at most 78 characters, unless a word is longer.
[[nodiscard]] std::string Wrapped(std::string_view text)
{
    return SqxWrapped(text, {.width = 78}, Escaped);
}

void AddItem(std::string& page, const std::string& head, std::string_view text)
{
    page += ".TP\n" + head + "\n" + Wrapped(text) + "\n";
}

void AddEntries(std::string& page, const char* heading, std::span<const SqxEntry> entries)
{
    if (entries.empty())
        return;
    page.append(".SH ").append(heading).append("\n");
    for (const SqxEntry& entry : entries)
        AddItem(page, "\\fB" + Escaped(entry.word) + "\\fR", entry.meaning);
}

void AddOptions(std::string& page, std::span<const SqxOption> options)
{
    page += ".SH OPTIONS\n";
    for (const SqxOption& option : options) {
        std::string head = BoldWords(option.word);
        if (!option.argument.empty())
            head += " \\fI" + Escaped(option.argument) + "\\fR";
        AddItem(page, head, option.effect);
    }
}

void AddExamples(std::string& page, std::span<const SqxEntry> examples)
{
    if (examples.empty())
        return;
    page += ".SH EXAMPLES\n";
    bool first = true;
    for (const SqxEntry& example : examples) {
        if (!first)
            page += ".PP\n";
        first = false;
        std::string meaning(example.meaning);
        meaning[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(meaning[0])));
        page += Wrapped(meaning) + ":\n.PP\n.RS 4\n.EX\n" + Escaped(example.word) + "\n.EE\n.RE\n";
    }
}

void AddSeeAlso(std::string& page, const SqxProgram& program,
                std::span<const SqxProgram* const> all)
{
    page += ".SH SEE ALSO\n";
    // The comma is attached to the section number, so that both are one argument of `.BR`.
    std::string list;
    for (const SqxProgram* other : all)
        if (other->name != program.name)
            list += (list.empty() ? ".BR " : ",\n.BR ") + std::string(other->name) + " (1)";
    page += list + "\n";
}

[[nodiscard]] std::string UpperCase(std::string_view text)
{
    std::string upper;
    for (const char c : text)
        upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return upper;
}

}  // namespace

std::string SqxManualPage(const SqxProgram& program, std::span<const SqxProgram* const> all)
{
    std::string page = ".TH " + UpperCase(program.name) + " 1 " + k_date + " shaderqx\n.SH NAME\n";
    page += std::string(program.name) + " \\- " + Escaped(program.purpose) + "\n.SH SYNOPSIS\n.B " +
            std::string(program.name) + "\n" + Escaped(program.synopsis) + "\n.SH DESCRIPTION\n";
    bool first = true;
    for (const std::string_view paragraph : program.description) {
        page += (first ? "" : ".PP\n") + Wrapped(paragraph) + "\n";
        first = false;
    }
    AddOptions(page, program.options);
    AddEntries(page, "EXIT STATUS", program.statuses);
    AddEntries(page, "ENVIRONMENT", program.environment);
    AddEntries(page, "FILES", program.files);
    AddExamples(page, program.examples);
    AddSeeAlso(page, program, all);
    return page;
}
