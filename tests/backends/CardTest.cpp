// The cards of the table are checked one by one at compile time. These tests give the reader faulty
// cards, and check the table as a whole.

#include <gtest/gtest.h>

#include <set>

#include "sqx/SqxCardReader.h"
#include "sqx/SqxNumbers.h"

namespace {

std::string FaultOf(std::string_view text)
{
    try {
        static_cast<void>(SqxCardReader(SqxPrimitive::CALL_PRIM_SIN, text).Read());
        return "";
    } catch (const SqxCardFault& fault) {
        return fault.what;
    }
}

}  // namespace

TEST(SqxCardReader, RefusesWrongCards)
{
    static const struct {
        const char* text;
        const char* fault;
    } cases[] = {
        {"@forms(1, -, 3) @fold float f(float x) // meaning", ""},
        {"flaot f()", "a type was expected"},
        {"float f(uniform float)", "a word was expected"},
        {"float f(float x", "another character was expected"},
        {"float f(float x) y", "text after the end of the card"},
        {"float f(space x)", "a type of instructions alone in a function"},
        {"float f(assigned float x)", "a type of instructions alone in a function"},
        {"@froms(1) float f()", "an attribute was expected"},
        {"@forms(1, 2, 3, 4, 5) float f()", "there are four forms"},
        {"@forms(one) float f()", "a number was expected"},
        {"@reads() float f()", "a word was expected"},
        {"@writes(nothing) void f(output float x)", "a rule was expected"},
        {"@simd @uniform(z) float f(float x)", "@uniform names no input of a function with @simd"},
        {"@uniform(x) float f(float x)", "@uniform names no input of a function with @simd"},
        {"@simd @uniform(x) void f(output float x)",
         "@uniform names no input of a function with @simd"},
        {"@fold @ordered float f()", "a call of it cannot be evaluated by the compiler"},
        {"@cheap float f(float x)", "a kind of kernel without a function"},
        {"@lights color f()", "what looks at lights reads P"},
        {"float f(float x ..., float y)", "the order of the parameters is wrong"},
        {"float f(optional float x, float y)", "the order of the parameters is wrong"},
        {"float f(named float x = 0, optional float y)", "the order of the parameters is wrong"},
        {"float f() //", "text was expected"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FaultOf(c.text), c.fault) << c.text;
}

TEST(SqxCards, AreFoundByName)
{
    for (const SqxCard& card : SqxCards()) {
        EXPECT_EQ(SqxPrimitiveNamed(SqxPrimitiveName(card.primitive)), card.primitive);
        for (const short number : card.numbers)
            EXPECT_TRUE(number == 0 || SqxNumberNamed(SqxNumberName(number)) == number) << number;
    }
    ASSERT_EQ(SqxCardsNamed("mix").size(), 3u);
    EXPECT_EQ(SqxCardsNamed("mix")[1]->primitive, SqxPrimitive::CALL_PRIM_MIX_1D);
    EXPECT_TRUE(SqxCardsNamed("mixx").empty());
    EXPECT_TRUE(SqxCardsNamed("").empty());
    EXPECT_EQ(SqxPrimitiveNamed("CALL_PRIM_SIN_SIMD"), std::nullopt);
    EXPECT_EQ(SqxNumberNamed(""), 0);
    EXPECT_EQ(SqxChapterOf(*SqxCardsNamed("radians")[0]), "Mathematics");
}

// The grammar accepts `@forms`, `@carries`, `@reads` and the attributes for `SqxRun` in each card,
// but only those in a primitive's first card are used.
TEST(SqxCards, KeepTheFactsOfAPrimitiveInItsFirstCard)
{
    std::set<SqxPrimitive> known;
    for (const SqxCard& card : SqxCards()) {
        if (known.insert(card.primitive).second)
            continue;
        EXPECT_TRUE(!card.HasNumber() && !card.HasReads() && card.carriedCount == 0 &&
                    card.run == SqxRun::Point)
            << card.text;
    }
}
