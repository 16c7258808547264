// Manual pages and completion are made of the same tables as `--help`, so that they cannot tell
// different things. Pages use man(7) with the few macros that every reader of pages knows. The
// completion does without a library of bash functions, which not every system has.
//
// Tested by tests/manual/run.sh: each option that a program prints stands in its page.

#include "manual/SqxManualPage.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr const char* k_date = "2026-11-25";

/// Text as man(7) prints it as it is: backslashes and dashes have a meaning there, and so has a dot
/// or a quote at the start of a line.
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

/// "-o, --output" and the like: each spelling in bold.
[[nodiscard]] std::string BoldWords(std::string_view words)
{
    std::string text;
    for (const std::string_view word : SqxSpellings(words))
        text += (text.empty() ? "" : ", ") + ("\\fB" + Escaped(word) + "\\fR");
    return text;
}

/// The text in lines that a reader of the source can see whole.
[[nodiscard]] std::string Wrapped(std::string_view text)
{
    constexpr std::size_t k_width = 78;
    std::string lines;
    std::size_t column = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        const std::string word = Escaped(text.substr(0, end));
        if (column > 0 && column + 1 + word.size() > k_width) {
            lines += '\n';
            column = 0;
        } else if (column > 0) {
            lines += ' ';
            ++column;
        }
        lines += word;
        column += word.size();
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
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
    // The comma stands behind the section, as an argument of the same macro.
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

/// The spellings of all options, of those with "DIR" and the like only what stands in front.
[[nodiscard]] std::string OptionWords(std::span<const SqxOption> options)
{
    std::string text;
    for (const SqxOption& option : options)
        for (std::string_view word : SqxSpellings(option.word)) {
            if (word.starts_with("-I") || word.starts_with("-D"))
                word = word.substr(0, 2);
            text.append(text.empty() ? "" : " ").append(word);
        }
    return text;
}

/// The options that take a folder, as a pattern of the shell.
[[nodiscard]] std::string FolderOptions(std::span<const SqxOption> options)
{
    std::string text;
    for (const SqxOption& option : options)
        if (option.argument == "DIR")
            text += (text.empty() ? "" : "|") + std::string(option.word);
    return text;
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

std::string SqxBashCompletion(std::span<const SqxProgram* const> all)
{
    std::string text =
        R"bash(# Completion of the command lines of shaderqx and the programs beside it, for bash.

# usage: _shaderqx_words "OPTIONS" "FOLDER OPTIONS" "FILE ENDINGS"
_shaderqx_words() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}
    COMPREPLY=()
    case "|$2|" in
        *"|$before|"*)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$word")
            return
            ;;
    esac
    case $word in
        -*) mapfile -t COMPREPLY < <(compgen -W "$1" -- "$word") ;;
        *)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X "!*.@($3)" -- "$word")
            ;;
    esac
}
)bash";
    for (const SqxProgram* program : all) {
        std::string endings(program->fileEndings);
        for (char& c : endings)
            c = c == ' ' ? '|' : c;
        const std::string name(program->name);
        text += "_" + name + "() { shopt -s extglob; _shaderqx_words '" +
                OptionWords(program->options) + "' '" + FolderOptions(program->options) + "' '" +
                endings + "'; }\ncomplete -F _" + name + " " + name + "\n";
    }
    return text;
}
