// A rule names files as words:
//
//     matte.sqx: matte.sl include/noise.h
//
// `$` is doubled. A backslash escapes a blank. Backslashes before a blank, and backslashes that end
// a name, must be doubled, and others must not:
//
//     a b -> a\ b        a\ b -> a\\\ b        a\b -> a\b
//
// A backslash also escapes a `#`, and for make a `:`. Make requires that backslashes before these
// are doubled too; ninja requires that they are not. In a target, make takes an unescaped `%` for a
// pattern.
//
// Tested by tests/make/run.sh and tests/preprocessor.

#include "make/SqxMakeWord.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr std::string_view k_blanks = " \t";

/// Returns the path with a backslash before each character of `special`, with doubled `$`, and with
/// doubled backslashes where `reader` requires them.
std::string Escaped(const std::string& path, std::string_view special, SqxRuleReader reader)
{
    std::string word;
    std::size_t backslashes = 0;  // number of them right before the character
    for (const char c : path) {
        const bool doubles =
            reader == SqxRuleReader::Make || k_blanks.find(c) != std::string_view::npos;
        if (special.find(c) != std::string_view::npos)
            word.append((doubles ? backslashes : 0) + 1, '\\');
        if (c == '$')
            word += '$';
        word += c;
        backslashes = c == '\\' ? backslashes + 1 : 0;
    }
    return word.append(backslashes, '\\');  // a blank, a ':' or the line end follows in the rule
}

}  // namespace

std::string SqxMakeWord(const std::string& path, SqxRuleReader reader)
{
    return Escaped(path, reader == SqxRuleReader::Make ? " \t#:" : " \t#", reader);
}

std::string SqxMakeTarget(const std::string& path, SqxRuleReader reader)
{
    return Escaped(path, reader == SqxRuleReader::Make ? " \t#:%" : " \t#", reader);
}

bool SqxHasLineBreak(std::string_view path)
{
    return path.find_first_of("\n\r") != std::string_view::npos;
}

bool SqxNinjaReads(std::string_view path)
{
    constexpr std::string_view k_signs = " $+,/_.~-@=(){}!";
    return std::all_of(path.begin(), path.end(), [&](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x80 || std::isalnum(byte) != 0 || k_signs.find(c) != std::string_view::npos;
    });
}

std::string SqxMakeRule(const std::vector<std::string>& targets,
                        const std::vector<std::string>& files, SqxRuleReader reader)
{
    std::string rule;
    for (const std::string& target : targets)
        rule += (rule.empty() ? "" : " ") + target;
    rule += ":";
    for (const std::string& file : files)
        rule += (file == files.front() ? " " : " \\\n ") + SqxMakeWord(file, reader);
    return rule + "\n";
}
