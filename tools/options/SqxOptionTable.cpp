// `--help` prints usage and description, then the options. The effects of the options are in one
// column, to the right of the longest option.
//
// Tested by tests/manual/run.sh, which checks that the manual pages contain its options.

#include "options/SqxOptionTable.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>

#include "options/SqxWrapped.h"
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
        text += SqxWrapped(paragraph, {.width = k_width, .indent = 0}) + "\n";
        text += '\n';
    }
    std::size_t width = 0;
    for (const SqxOption& option : program.options)
        width = std::max(width, WithArgument(option).size());
    for (const SqxOption& option : program.options) {
        const std::string words = WithArgument(option);
        text.append("  ").append(words).append(width + 2 - words.size(), ' ');
        text += SqxWrapped(option.effect, {.width = k_width, .indent = width + 4}) + "\n";
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
