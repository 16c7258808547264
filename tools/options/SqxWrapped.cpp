// Tested by tests/options.

#include "options/SqxWrapped.h"

#include <algorithm>

std::string SqxWrapped(std::string_view words, const SqxLineLimits& limits,
                       std::string (*spell)(std::string_view))
{
    std::string lines;
    std::size_t column = limits.indent;
    while (!words.empty()) {
        const std::size_t end = std::min(words.find(' '), words.size());
        const std::string word =
            spell ? spell(words.substr(0, end)) : std::string(words.substr(0, end));
        if (column > limits.indent && column + 1 + word.size() > limits.width) {
            lines.append("\n").append(limits.indent, ' ');
            column = limits.indent;
        } else if (column > limits.indent) {
            lines += ' ';
            ++column;
        }
        lines += word;
        column += word.size();
        words.remove_prefix(std::min(end + 1, words.size()));
    }
    return lines;
}
