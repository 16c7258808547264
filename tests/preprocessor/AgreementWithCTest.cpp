// Compares all tokens, with their files and lines, with those of the system's C preprocessor. The
// sources are the examples, the shaders of the tests, and cases for the rules of C, among them
// examples of its standard. Sources for which the C preprocessor has no output are skipped.

#include <array>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "preprocessor/SlcPreprocessor.h"
#include "preprocessor/SlcSourceLexer.h"

namespace {

namespace fs = std::filesystem;

struct PlacedToken {
    std::string text;
    std::string file;
    int line = 0;
    bool operator==(const PlacedToken&) const = default;
};

std::ostream& operator<<(std::ostream& out, const PlacedToken& token)
{
    return out << token.file << ':' << token.line << ": " << token.text;
}

std::vector<PlacedToken> TokensOf(const std::string& preprocessed)
{
    std::vector<PlacedToken> tokens;
    std::string file;
    int line = 0;
    std::size_t begin = 0;
    for (std::size_t end; (end = preprocessed.find('\n', begin)) != std::string::npos;
         begin = end + 1, ++line) {
        static const std::regex k_marker("# ([0-9]+) \"(.*)\".*");
        const std::string text = preprocessed.substr(begin, end - begin);
        std::smatch match;
        if (text.starts_with("# ") && std::regex_match(text, match, k_marker)) {
            line = std::stoi(match[1]) - 1;
            file = match[2];
            continue;
        }
        const SlcSourceText source("", text);
        SlcSourceLexer lexer(source);
        for (SlcSourceToken t = lexer.Next(); !t.EndsLine(); t = lexer.Next())
            tokens.push_back({std::string(t.text), file, line});
    }
    return tokens;
}

std::string OutputOf(const std::string& command)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(::popen(command.c_str(), "r"),
                                                               &::pclose);
    std::string output;
    std::array<char, 4096> buffer;
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe.get()))
        output.append(buffer.data(), count);
    return output;
}

/// Compares the tokens of one source. False if the C preprocessor had no output to compare with.
bool Compare(const fs::path& source)
{
    const std::string folder = source.parent_path().string();
    const std::string ofC = OutputOf("env -u CPATH " SLC_C_COMPILER
                                     " -E -w -undef -nostdinc -x c -fno-extended-identifiers -I'" +
                                     folder + "' '" + source.string() + "' 2>/dev/null");
    SlcPreprocessorOptions options;
    options.folders = {folder};
    const auto expected = TokensOf(ofC);
    if (expected.empty())
        return false;  // cc ends at a missing included file
    const auto actual = TokensOf(SlcPreprocess(source.string(), options).text);
    for (std::size_t i = 0; i < std::min(expected.size(), actual.size()); ++i)
        if (actual[i] != expected[i]) {
            ADD_FAILURE() << "token " << i << ": " << actual[i] << ", expected " << expected[i];
            return true;
        }
    EXPECT_EQ(actual.size(), expected.size()) << source;
    return true;
}

TEST(AgreementWithC, TokensAndLinesEqualThoseOfTheSystem)
{
    if (std::system(SLC_C_COMPILER " --version > /dev/null 2>&1") != 0)
        GTEST_SKIP() << "There is no C compiler " << SLC_C_COMPILER;
    int compared = 0;
    for (const char* folder : {SLC_TESTS_FOLDER, SLC_EXAMPLES_FOLDER})
        for (const auto& entry : fs::recursive_directory_iterator(folder))
            if (entry.path().extension() == ".sl" && Compare(entry.path()))
                ++compared;
    EXPECT_GT(compared, 140);
}

}  // namespace
