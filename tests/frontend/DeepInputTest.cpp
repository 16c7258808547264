// Tests the limits on the depth of the source, without which deep input would overflow a stack.

#include <gtest/gtest.h>

#include "helpers/ParsedSource.h"

namespace {

std::string Repeat(std::string_view text, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
        all += '\n';
    }
    return all;
}

struct DeepCase {
    const char* name;
    std::string statements;
    const char* report;
};

}  // namespace

TEST(SlcParser, ReportsInputThatIsNestedTooDeeply)
{
    const char* const overflow = "parser stack overflow";
    const char* const tooDeep = "Expression is too long or nested too deeply";
    const DeepCase cases[] = {
        {"parentheses", "x = " + Repeat("(", 20000) + "1" + Repeat(")", 20000) + ";", overflow},
        {"blocks", Repeat("{", 20000) + Repeat("}", 20000), overflow},
        {"conditions", Repeat("if (a < b) {", 5000) + Repeat("}", 5000), overflow},
        {"else-ifs", Repeat("if (a < b) x = 1; else", 5000) + ";", overflow},
        {"signs", "x = " + Repeat("-", 20000) + "1;", overflow},
        {"assignments", Repeat("x =", 20000) + "1;", overflow},
        {"calls", "x = " + Repeat("f(", 5000) + Repeat(")", 5000) + ";", overflow},
        {"sum", "x = 1" + Repeat("+ a", 100000) + ";", tooDeep},
        {"product in a call", "f(1" + Repeat("* a", 100000) + ");", tooDeep},
        {"condition", "if (a < b" + Repeat("&& a < b", 100000) + ") ;", tooDeep},
    };
    for (const DeepCase& c : cases) {
        const ParsedSource parsed("surface s() { " + c.statements + " }");
        EXPECT_NE(parsed.Output().find(c.report), std::string::npos) << c.name;
        EXPECT_EQ(NbErrors(), 1) << c.name;
    }
}

TEST(SlcParser, AcceptsInputUpToTheHeightThatPassesCanWalk)
{
    const int terms = SlcSyntaxNode::k_maxHeight - 100;
    const DeepCase cases[] = {
        {"sum", "x = 1" + Repeat("+ a", terms) + ";", ""},
        {"parentheses", "x = " + Repeat("(", 9900) + "1" + Repeat(")", 9900) + ";", ""},
        {"blocks", Repeat("{", terms) + Repeat("}", terms), ""},
        {"statements", Repeat("x = 1;", 100000), ""},
    };
    for (const DeepCase& c : cases) {
        const ParsedSource parsed("surface s() { " + c.statements + " }");
        ASSERT_NE(parsed.Root(), nullptr) << c.name;
        EXPECT_LE(parsed.Root()->Height(), SlcSyntaxNode::k_maxHeight) << c.name;
    }
}

TEST(SlcParser, ReportsAListAboveAnElementOfMaximalHeight)
{
    const ParsedSource parsed("surface s() { float x[2] = {a" +
                              Repeat("+ a", SlcSyntaxNode::k_maxHeight) + ", a}; }");
    EXPECT_EQ(parsed.Reports(), "10001: ERROR: Statement is nested too deeply\n");
}
