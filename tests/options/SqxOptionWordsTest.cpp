// How the programs beside the compiler take their command lines apart.

#include <gtest/gtest.h>

#include "options/SqxOptionWords.h"

namespace {

/// The walk over words as a program does it that has '-o FILE', '--size SIZE', '--sizes' and '-h'.
std::string Walk(const std::vector<std::string>& arguments)
{
    SqxOptionWords words(arguments);
    std::string told;
    try {
        while (words.Next())
            if (!words.IsOption())
                told += "[" + words.Word() + "]";
            else if (const auto output = words.Value("-o", "a file"))
                told += "o=" + *output + ";";
            else if (const auto size = words.Value("--size", "a size"))
                told += "size=" + *size + ";";
            else if (words.Is("--sizes"))
                told += "sizes;";
            else if (words.Is("-h, -?, --help"))
                told += "help;";
            else
                words.RefuseWord();
    } catch (const SqxUsageError& error) {
        return told + error.what();
    }
    return told;
}

TEST(SqxOptionWords, TellsOptionsValuesAndFilesApart)
{
    struct {
        std::vector<std::string> words;
        const char* told;
    } static const cases[] = {
        {{}, ""},
        {{"a", "-ob", "-", "c"}, "[a]o=b;[-][c]"},
        {{"-h", "-?", "--help", ""}, "help;help;help;[]"},
        {{"-o", "--help", "--size=8", "--size", "9"}, "o=--help;size=8;size=9;"},
        {{"-o=b", "--size==", "--sizes"}, "o==b;size==;sizes;"},
        {{"a", "--", "-ob", "--", "-"}, "[a][-ob][--][-]"},
        {{"-o", "--", "--"}, "o=--;"},  // the first one is the file
        {{"--"}, ""},
        {{"a", "-o"}, "[a]Option '-o' needs a file behind it"},
        {{"-o", ""}, "Option '-o' needs a file behind it"},
        {{"--size="}, "Option '--size' needs a size behind it"},
        {{"--sizer"}, "Unknown option '--sizer'"},
        {{"--help=1"}, "Unknown option '--help=1'"},
        {{"-hx"}, "Unknown option '-hx'"},
        {{"-h, -?"}, "Unknown option '-h, -?'"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(Walk(one.words), one.told);
}

}  // namespace
