// `--help`: the effects stand in one column, behind the longest word.

#include "options/SqxOptionTable.h"

#include <algorithm>

namespace {

[[nodiscard]] std::string WithArgument(const SqxOption& option)
{
    std::string text(option.word);
    if (!option.argument.empty())
        text.append(" ").append(option.argument);
    return text;
}

}  // namespace

std::string SqxHelpText(const SqxProgram& program)
{
    std::string text = "Usage: ";
    text.append(program.name).append(" ").append(program.synopsis).append("\n");
    std::size_t width = 0;
    for (const SqxOption& option : program.options)
        width = std::max(width, WithArgument(option).size());
    for (const SqxOption& option : program.options) {
        const std::string words = WithArgument(option);
        text.append("  ").append(words).append(width + 2 - words.size(), ' ');
        text.append(option.effect).append("\n");
    }
    return text;
}
