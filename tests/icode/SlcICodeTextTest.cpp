// Tests the text of instructions, and the rules that each list must follow.

#include <gtest/gtest.h>

#include "helpers/CodeText.h"
#include "icode/SlcICodeNames.h"
#include "icode/SlcICodeValidator.h"

namespace {

constexpr auto k_lowered = SlcICodeValidator::Stage::Lowered;

// The tests that run whole shaders also parse the text of their lists again. Many of these cases
// are instructions that the lowering emits rarely or never.
TEST(SlcICodeText, ParsesToTheSameList)
{
    static const char* const texts[] = {
        "x = zero(); x = -y; x = -(2); x = -2; x = 1e-07; x = #nan; x = #-inf;",
        "x = y . z; x = y ^ z; f = x >= 1; f = x != y; f = h or f; f = not h; f = f but not h;",
        "x = point(1, y, z); x = vector(1, 2, 3); x = normal(1, 2, 3); x = color(0, 1, y);",
        "x = matrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1); x = concat_space(y, \"a b\");",
        "x = from_space_point(y, \"object\") simd at f; x = to_space_color(y, \"hsv\");",
        "check_index(\"a\", u, #3, #12, \"a \\\" b.sl\"); r = &a[u]; r = 1; x <- y;",
        "PRINTF(\"%f; {\", x) counted; x = CALL_TEXTURE_1D(\"t\", #0, x) simd at f; "
        "RANDOM_FLOAT();",
        "x = shadeop(\"./lib:f\", \"f\", x, a); shadeop(\"k\", \"m\"); a = to_shadeop(a); "
        "a = from_shadeop(a);",
        "x, x, x, x, x, x, x, x = patch(y, z) at f; x, x, x, x = patch(y); x = interval(y) at f;",
        "evaluate_lights(); evaluate_lights(x); forget_lights(); lights S E; f = in_cone(x, y, 1); "
        "next S; E:",
        "f, x = illuminate(x, y) simd; f, x = illuminate(x, y, 1, z); f, x = solar(x, 0) simd at "
        "f;",
        "note; begin; { f?( break f h to E; continue f to S; ) !f?( x = y; ) } S: !g? goto S; g? "
        "goto E; "
        "goto E; E: end;",
    };
    for (const char* text : texts)
        EXPECT_EQ(CodeText::Print(*CodeText().List(text)), text);
}

TEST(SlcICodeParser, MakesNewLabelsForEachText)
{
    class : public SlcICodeScope {
        SlcOperand FindVariable(const std::string&) override { return nullptr; }
        SlcPtr<SlcFuncSymbolEntry> FindFunction(SqxPrimitive,
                                                const std::deque<SlcOperand>&) override
        {
            return nullptr;
        }
    } scope;
    SlcICodeParser parser(scope);
    const auto first = parser.Parse("L:");
    EXPECT_FALSE(parser.Parse("L:").front() == first.front());
}

TEST(SlcICodeText, ReportsWhereParsingFails)
{
    struct Case {
        const char* text;
        const char* fault;
    };
    static const Case cases[] = {
        {"x = y", ""},  // the last semicolon may be missing
        {"x = y + ;", "expected an operand after ' x = y + ; '"},
        {"x = y % z;", "expected an operator after ' x = y '"},
        {"x = y z;", "expected an operator after ' x = y '"},
        {"x y;", "expected '=' after ' x '"},
        {"{ x = 1;", "expected a closing bracket after ' { x = 1 ; '"},
        {"x = 1; )", "expected an opening bracket after ' x = 1 ; ) '"},
        {"x = colour(1, 2, 3);",
         "expected an instruction in place of 'colour' after ' 1 , 2 , 3 ) '"},
        {"x = color(1, 2);",
         "expected an instruction in place of 'color' after ' color ( 1 , 2 ) '"},
        {"x = SIN(1", "expected ')' after ' x = SIN ( 1 '"},
        {"x =", "expected more after ' x = '"},
        {"x = #y;", "expected an operand after ' x = #y '"},
        {"x = #3000000000;", "expected an operand after ' x = #3000000000 '"},
        {"x = 1e999;", "expected an operand after ' x = 1e999 '"},
    };
    for (const Case& c : cases) {
        std::string fault;
        try {
            static_cast<void>(CodeText().List(c.text));
        } catch (const SlcICodeSyntaxError& error) {
            fault = error.what();
        }
        EXPECT_EQ(fault, c.fault) << c.text;
    }
}

TEST(SlcICodeValidator, FindsInvalidInstructions)
{
    struct Case {
        const char* text;
        const char* fault;
    };
    static const Case cases[] = {
        {"begin; { f = x < y; f?( x = T1_; ) }",
         "'x = t0;': a temporary is read before it is written"},
        {"{ T1_ = x; x = T1_; }", ""},
        {"{ { } }", "'{': a parallel run opens in another"},
        {"{ L: }", "'L:': a label is in a parallel run"},
        {"L: L:", "'L:': the label is in the list twice"},
        {"goto L;", "'goto L;': the label is not in the list"},
        {"{ goto L; } L:", "'goto L;': a jump is in a parallel run"},
        {"f? goto L; L:", "'f? goto L;': the flag must be uniform"},
        {"x? goto L; L:", "'x? goto L;': the flag is no boolean"},
        {"f?( u = 1; )", "'f?(': the flag must be uniform"},
        {"g?( u = 1; )", ""},
        {"x = y + z;", "'x = y + z;': a varying value is computed outside of a parallel run"},
        {"x <- y; { x <- y; }",
         "'x <- y;': an instruction for the whole grid is in a parallel run"},
        {"x = SIN(y) simd; { x = SIN(y) simd; }",
         "'x = SIN(y) simd;': an instruction for the whole grid is in a parallel run"},
        {"u = u + x;", "'u = u + x;': a varying value is put into a uniform operand"},
        {"g = any f; { u = x; }", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(SlcICodeValidator::FirstFault(*CodeText().List(c.text), k_lowered), c.fault)
            << c.text;
}

TEST(SlcICodeNames, ATemporaryIsALocal)
{
    const auto isTemporary = [](const char* name, SlcStorageSpecNode* storage) {
        return SlcICodeNames::IsTemporary(SlcLexType(SlcLexicalNode::CreateIdent(name),
                                                     SlcTypeNode::AFloat(),
                                                     SlcDetailNode::AUniform(), storage));
    };
    EXPECT_TRUE(isTemporary("T1_", SlcStorageSpecNode::ALocal()));
    EXPECT_FALSE(isTemporary("T1_2", SlcStorageSpecNode::ALocal()));
    EXPECT_FALSE(isTemporary("T1_", SlcStorageSpecNode::AInput()));
    EXPECT_FALSE(isTemporary("T1_", SlcStorageSpecNode::AOutput()));
}

// The parser refuses brackets that do not match, but a pass could leave them.
TEST(SlcICodeValidator, FindsBracketsThatDoNotMatch)
{
    static const char* const faults[] = {
        "'f?(': the flag must be uniform",                    // without {
        "')': no guard is open",                              // without f?(
        "'}': a guard is open at the end of a parallel run",  // without )
        "the end: a bracket is still open",                   // without }
    };
    for (int dropped = 0; dropped < 4; ++dropped) {
        const auto list = CodeText().List("{ f?( ) }");
        list->m_icodes.erase(list->m_icodes.begin() + dropped);
        EXPECT_EQ(SlcICodeValidator::FirstFault(*list, k_lowered), faults[dropped]);
    }
}

}  // namespace
