// Checks how all programs except the compiler parse their command lines.

#include <gtest/gtest.h>

#include "options/SqxOptionWords.h"

namespace {

/// Walks over the words as a program with '-o FILE', '--size SIZE', '--sizes' and '-h' does.
std::string Walk(const std::vector<std::string>& arguments)
{
    SqxOptionWords words(arguments);
    std::string said;
    try {
        while (words.Next())
            if (!words.IsOption())
                said += "[" + words.Word() + "]";
            else if (const auto output = words.Value("-o", "a file"))
                said += "o=" + *output + ";";
            else if (const auto size = words.Value("--size", "a size"))
                said += "size=" + *size + ";";
            else if (words.Is("--sizes"))
                said += "sizes;";
            else if (words.Is("-h, -?, --help"))
                said += "help;";
            else
                words.RefuseWord();
    } catch (const SqxUsageError& error) {
        return said + error.what();
    }
    return said;
}

TEST(SqxOptionWords, DistinguishesOptionsValuesAndFiles)
{
    struct {
        std::vector<std::string> words;
        const char* said;
    } static const cases[] = {
        {{}, ""},
        {{"a", "-ob", "-", "c"}, "[a]o=b;[-][c]"},
        {{"-h", "-?", "--help", ""}, "help;help;help;[]"},
        {{"-o", "--help", "--size=8", "--size", "9"}, "o=--help;size=8;size=9;"},
        {{"-o=b", "--size==", "--sizes"}, "o==b;size==;sizes;"},
        {{"a", "--", "-ob", "--", "-"}, "[a][-ob][--][-]"},
        {{"-o", "--", "--"}, "o=--;"},  // the first '--' is the file
        {{"--"}, ""},
        {{"a", "-o"}, "[a]Option '-o' needs a file after it"},
        {{"-o", ""}, "Option '-o' needs a file after it"},
        {{"--size="}, "Option '--size' needs a size after it"},
        {{"--sizer"}, "Unknown option '--sizer'"},
        {{"--help=1"}, "Unknown option '--help=1'"},
        {{"-hx"}, "Unknown option '-hx'"},
        {{"-h, -?"}, "Unknown option '-h, -?'"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(Walk(one.words), one.said);
}

}  // namespace
