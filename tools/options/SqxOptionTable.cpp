// `--help`: what the program does, then the options; their effects are in one column, after the
// longest word.
//
// Tested by tests/manual/run.sh, which compares it with the manual pages.

#include "options/SqxOptionTable.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>

#include "support/QxVersion.h"

namespace {

constexpr std::size_t k_width = 100;

[[nodiscard]] std::string WithArgument(const SqxOption& option)
{
    std::string text(option.word);
    if (!option.argument.empty())
        text.append(" ").append(option.argument);
    return text;
}

/// Adds words to the last line of the text, and continues in indented lines.
void AddWrapped(std::string& text, std::string_view words, std::size_t indent)
{
    std::size_t column = indent;
    while (!words.empty()) {
        const std::size_t end = std::min(words.find(' '), words.size());
        if (column > indent && column + 1 + end > k_width) {
            text.append("\n").append(indent, ' ');
            column = indent;
        } else if (column > indent) {
            text += ' ';
            ++column;
        }
        text += words.substr(0, end);
        column += end;
        words.remove_prefix(std::min(end + 1, words.size()));
    }
    text += '\n';
}

}  // namespace

std::vector<std::string_view> SqxSpellings(std::string_view words)
{
    constexpr std::string_view k_comma = ", ";
    std::vector<std::string_view> spellings;
    while (true) {
        const std::size_t end = words.find(k_comma);
        spellings.push_back(words.substr(0, end));
        if (end == std::string_view::npos)
            return spellings;
        words.remove_prefix(end + k_comma.size());
    }
}

std::string SqxHelpText(const SqxProgram& program)
{
    std::string text = "Usage: ";
    text.append(program.name).append(" ").append(program.synopsis).append("\n\n");
    for (const std::string_view paragraph : program.description) {
        AddWrapped(text, paragraph, 0);
        text += '\n';
    }
    std::size_t width = 0;
    for (const SqxOption& option : program.options)
        width = std::max(width, WithArgument(option).size());
    for (const SqxOption& option : program.options) {
        const std::string words = WithArgument(option);
        text.append("  ").append(words).append(width + 2 - words.size(), ' ');
        AddWrapped(text, option.effect, width + 4);
    }
    return text;
}

int SqxPrintInformation(const SqxProgram& program, SqxInformation information)
{
    if (information == SqxInformation::Help) {
        std::cout << SqxHelpText(program);
    } else if (information == SqxInformation::Version) {
        const std::unique_ptr<char, decltype(&std::free)> version(QxGetVersionString(), &std::free);
        std::cout << program.name << " version " << version.get() << ".\n"
                  << QxGetCopyrightString() << '\n';
    }
    return std::cout.flush() ? 0 : 1;
}
