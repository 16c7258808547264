// Tests each pass over drafts alone, by the block before and after in the notation of DraftText.h.
// Drafts are the instructions of the machine during translation. tests/host/AgreementTest.cpp
// checks that the computed values stay the same.

#include <stdexcept>

#include <gtest/gtest.h>

#include "machine/DraftText.h"
#include "machine/translate/QxFuse.h"
#include "machine/translate/QxFuseFlags.h"
#include "machine/translate/QxJoinRuns.h"
#include "machine/translate/QxKnownJumps.h"
#include "machine/translate/QxLiveness.h"
#include "machine/translate/QxMergeConditions.h"
#include "machine/translate/QxSimplifyMasks.h"
#include "machine/translate/QxStripLocals.h"

namespace {

/// An empty `after` means an unchanged block.
struct PassCase {
    const char* before;
    const char* after;
};

template <std::size_t N, class Pass>
void ExpectRewritten(const PassCase (&cases)[N], const Pass& pass)
{
    for (const PassCase& c : cases) {
        DraftText text(c.before);
        EXPECT_EQ(text.Print(), c.before);
        pass(text);
        EXPECT_EQ(text.Print(), *c.after != '\0' ? c.after : c.before) << c.before;
    }
}

void Join(DraftText& text)
{
    QxJoinRuns(text.Block(), text.Variables());
    text.Block().MarkWrittenFlags(text.Variables().Count());
}

void Fuse(DraftText& text)
{
    QxLiveness liveness(text.Block(), text.Storages(), std::nullopt);
    ASSERT_TRUE(liveness.Compute());
    QxFuse(text.Writer(), liveness);
}

void SimplifyMasks(DraftText& text)
{
    QxLiveness liveness(text.Block(), text.Storages(), std::nullopt);
    ASSERT_TRUE(liveness.Compute());
    QxIgnoreMasks(text.Block(), liveness);
    QxDropShortBrackets(text.Block());
}

void FuseFlags(DraftText& text)
{
    QxLiveness liveness(text.Block(), text.Storages(), std::nullopt);
    ASSERT_TRUE(liveness.Compute());
    QxFuseFlags(text.Writer(), liveness, text.Variables().Count());
}

void UseStripLocals(DraftText& text)
{
    QxLiveness liveness(text.Block(), text.Storages(), text.Variable("z"));
    ASSERT_TRUE(liveness.Compute());
    QxUseStripLocals(text.Block(), liveness, text.Variables());
}

/// Returns each draft with the variables that are live after it and, after '/', those that points
/// outside of the open conditions still need. The variables after "first:" may be read before they
/// are written. `result` is read after the block; "" for none.
std::string Annotated(DraftText& text, const std::string& result)
{
    QxLiveness liveness(text.Block(), text.Storages(),
                        result.empty() ? std::nullopt : std::optional(text.Variable(result)));
    EXPECT_TRUE(liveness.Compute());
    std::vector<std::string> drafts(text.Block().drafts.size());
    liveness.WalkBack([&](std::size_t index, std::size_t) {
        std::string live;
        std::string elsewhere;
        for (const std::uint32_t variable : liveness.Locals()) {
            const QxOperand operand = text.Variables().OperandOf(variable);
            live += liveness.IsLive(operand) ? text.NameOf(variable) : "";
            elsewhere += liveness.IsLiveElsewhere(operand) ? text.NameOf(variable) : "";
        }
        drafts[index] = text.PrintDraft(index) + " [" + live +
                        (elsewhere.empty() ? "" : "/" + elsewhere) + "] ";
    });
    std::string all;
    for (std::size_t i = 0; i + 1 < drafts.size(); ++i)
        all += drafts[i];
    all += "first:";
    for (const std::uint32_t variable : liveness.ReadFirst())
        all += ' ' + text.NameOf(variable);
    return all;
}

}  // namespace

TEST(DraftText, RefusesMalformedBlocks)
{
    for (const char* text :
         {"{ x = ASSIGN_TO_ZERO_FLOAT;", "} ", "goto A;", "x = ;", "x = ASSIGN_TO_ZERO_FLOAT",
          "once", "each x = ASSIGN_TO_ZERO_FLOAT;", "goto A B: ;"})
        EXPECT_THROW(DraftText{text}, std::runtime_error) << text;
}

TEST(QxDropKnownJumps, DropsJumpsThatAnEarlierJumpDecides)
{
    static const PassCase cases[] = {
        // After the first drop only one path leads to the third jump.
        {"if not g goto B; if not g goto A; once u = ASSIGN_TO_ZERO_FLOAT; A: if not g goto B; "
         "once u1 = "
         "ASSIGN_TO_ZERO_FLOAT; B:",
         "if not g goto A; once u = ASSIGN_TO_ZERO_FLOAT; once u1 = ASSIGN_TO_ZERO_FLOAT; A:"},
        {"if g goto A; if g goto A; once u = ASSIGN_TO_ZERO_FLOAT; A:",
         "if g goto A; once u = ASSIGN_TO_ZERO_FLOAT; A:"},
        {"if g goto A; if not g goto A; once u = ASSIGN_TO_ZERO_FLOAT; A:", ""},
        {"if not g goto A; if not g1 goto A; once u = ASSIGN_TO_ZERO_FLOAT; A:", ""},
        {"if not g goto A; once g = ASSIGN_BOOL_BOOL g1; if not g goto A; once u = "
         "ASSIGN_TO_ZERO_FLOAT; A:",
         ""},
        {"goto A; if not g goto B; A: if not g goto B; once u = ASSIGN_TO_ZERO_FLOAT; B:", ""},
        // The next iteration of a loop over lights may find another value.
        {"if not g goto B; lights B; A: if not g goto B; once g = ASSIGN_BOOL_BOOL g1; again A; B:",
         ""},
    };
    ExpectRewritten(cases,
                    [](DraftText& text) { QxDropKnownJumps(text.Block(), text.Variables()); });
}

TEST(QxJoinRuns, JoinsPointwiseInstructionsIntoOneRun)
{
    static const PassCase cases[] = {
        {"{ x = ADD_FLOAT_FLOAT S 1; } { y = ADD_FLOAT_FLOAT x S; }",
         "{ x = ADD_FLOAT_FLOAT S 1; y = ADD_FLOAT_FLOAT x S; }"},
        {"grid c = CALL_PRIM_NORMALIZE C; grid x = CALL_PRIM_LENGTH c;",
         "{ c = CALL_PRIM_NORMALIZE C; x = CALL_PRIM_LENGTH c; }"},
        {"{ x = ASSIGN_TO_ZERO_FLOAT; } at f y = ADD_FLOAT_FLOAT x 1;",
         "{ x = ASSIGN_TO_ZERO_FLOAT; if f ( y = ADD_FLOAT_FLOAT x 1; ) }"},
        {"{ x = ASSIGN_TO_ZERO_FLOAT; } at f f = ASSIGN_BOOL_BOOL f1;",
         "{ x = ASSIGN_TO_ZERO_FLOAT; if copy f ( f = ASSIGN_BOOL_BOOL f1; ) }"},
        {"{ x = ASSIGN_TO_ZERO_FLOAT; } whole f y = ADD_FLOAT_FLOAT x 1;", ""},
        // area() must not start before all points have reached it.
        {"{ x = ADD_FLOAT_FLOAT S 1; } grid y = CALL_PRIM_AREA C; { z = ADD_FLOAT_FLOAT x S; }",
         ""},
        // Each point in turn writes its value to a uniform variable.
        {"{ x = ASSIGN_TO_ZERO_FLOAT; } each { u = ASSIGN_FLOAT_FLOAT x; } { y = "
         "ASSIGN_TO_ZERO_FLOAT; }",
         ""},
        {"{ x = ASSIGN_TO_ZERO_FLOAT; } grid u = ASSIGN_FLOAT_FLOAT x; { y = ASSIGN_TO_ZERO_FLOAT; "
         "}",
         ""},
    };
    ExpectRewritten(cases, Join);
}

TEST(QxJoinRuns, HoistsIndependentUniformInstructions)
{
    static const PassCase cases[] = {
        {"{ x = ADD_FLOAT_FLOAT S 1; } once u = ADD_FLOAT_FLOAT u1 1; { y = ADD_FLOAT_FLOAT x u; }",
         "once u = ADD_FLOAT_FLOAT u1 1; { x = ADD_FLOAT_FLOAT S 1; y = ADD_FLOAT_FLOAT x u; }"},
        // Uniform instructions at the end stay there.
        {"{ x = ASSIGN_TO_ZERO_FLOAT; } { y = ASSIGN_TO_ZERO_FLOAT; } once u = "
         "ASSIGN_TO_ZERO_FLOAT;",
         "{ x = ASSIGN_TO_ZERO_FLOAT; y = ASSIGN_TO_ZERO_FLOAT; } once u = ASSIGN_TO_ZERO_FLOAT;"},
        // An earlier instruction reads the old value, as an operand or as a flag.
        {"{ x = ADD_FLOAT_FLOAT S u; } once u = ASSIGN_TO_ZERO_FLOAT; { y = ADD_FLOAT_FLOAT x u; }",
         ""},
        {"{ if g ( x = ASSIGN_TO_ZERO_FLOAT; ) } once g = ASSIGN_BOOL_BOOL g1; { y = "
         "ASSIGN_TO_ZERO_FLOAT; }",
         ""},
    };
    ExpectRewritten(cases, Join);
}

TEST(QxJoinRuns, HoistsLightsIfNothingBeforeAffectsThem)
{
    static const PassCase cases[] = {
        {"{ c = INIT_COLOR S S S; c3 = ASSIGN_COLOR_COLOR c; } once EVAL_LIGHTS_FOR_P; grid c1 = "
         "CALL_PRIM_AMBIENT; grid c2 = CALL_PRIM_DIFFUSE c;",
         "once EVAL_LIGHTS_FOR_P; grid c1 = CALL_PRIM_AMBIENT; { c = INIT_COLOR S S S; c3 = "
         "ASSIGN_COLOR_COLOR c; c2 = CALL_PRIM_DIFFUSE c; }"},
        // The run before changes values that lights read, uses the lights, or reads or writes the
        // color that the call writes.
        {"{ S = ASSIGN_TO_ZERO_FLOAT; } once EVAL_LIGHTS_FOR_P; { c = INIT_COLOR S S S; }", ""},
        {"{ c = CALL_PRIM_DIFFUSE c1; } once EVAL_LIGHTS_FOR_P; { c2 = CALL_PRIM_DIFFUSE c; }", ""},
        {"{ c = ASSIGN_COLOR_COLOR c1; } grid c1 = CALL_PRIM_AMBIENT; { c2 = ASSIGN_COLOR_COLOR c; "
         "}",
         ""},
        {"{ c1 = ASSIGN_COLOR_COLOR c; } grid c1 = CALL_PRIM_AMBIENT; { c2 = ASSIGN_COLOR_COLOR "
         "c1; "
         "}",
         ""},
    };
    ExpectRewritten(cases, Join);
}

TEST(QxJoinRuns, RunsLoopsStripByStripIfOnlyTheirExitDependsOnOtherPoints)
{
    static const PassCase cases[] = {
        {"A: { f = BOOL_LESS_THEN_FLOAT_FLOAT x 1; if f ( x = ADD_FLOAT_FLOAT x S; ) } grid g = "
         "SET_UNIFORM_BOOL_FLAG f; if g goto A;",
         "{ A: f = BOOL_LESS_THEN_FLOAT_FLOAT x 1; if f ( x = ADD_FLOAT_FLOAT x S; ) g = "
         "SET_UNIFORM_BOOL_FLAG f; if g goto A; }"},
        // Something else reads the flag.
        {"A: { x = ADD_FLOAT_FLOAT x S; } grid g = SET_UNIFORM_BOOL_FLAG f; if g goto A; once g1 = "
         "ASSIGN_BOOL_BOOL g;",
         ""},
        // The number of iterations, which `u` counts, depends on all points.
        {"A: { x = ADD_FLOAT_FLOAT x S; } once u = ADD_FLOAT_FLOAT u 1; grid g = "
         "SET_UNIFORM_BOOL_FLAG f; if g goto A;",
         ""},
        // A jump from elsewhere leads into the middle of the runs, or to their beginning, where it
        // does no harm.
        {"if g goto A; grid y = CALL_PRIM_AREA C; { x = ADD_FLOAT_FLOAT S 1; } A: { z = "
         "ADD_FLOAT_FLOAT x 1; }",
         ""},
        {"if g goto A; grid y = CALL_PRIM_AREA C; A: { x = ADD_FLOAT_FLOAT S 1; } { z = "
         "ADD_FLOAT_FLOAT x 1; }",
         "if g goto A; grid y = CALL_PRIM_AREA C; A: { x = ADD_FLOAT_FLOAT S 1; z = "
         "ADD_FLOAT_FLOAT x 1; }"},
        {"lights B; A: { x = ADD_FLOAT_FLOAT S 1; } { z = ADD_FLOAT_FLOAT x 1; } again A; B:",
         "lights B; A: { x = ADD_FLOAT_FLOAT S 1; z = ADD_FLOAT_FLOAT x 1; } again A; B:"},
    };
    ExpectRewritten(cases, Join);
}

TEST(QxFuse, FusesTwoInstructionsIntoOne)
{
    static const PassCase cases[] = {
        {"{ x = MULT_FLOAT_FLOAT a b; S = ADD_FLOAT_FLOAT x d; }", "{ S = product_plus a b d; }"},
        {"{ x = MULT_FLOAT_FLOAT a b; S = ADD_FLOAT_FLOAT d x; }", "{ S = product_plus a b d; }"},
        {"{ x = MULT_FLOAT_FLOAT a b; S = SUB_FLOAT_FLOAT x d; }", "{ S = product_minus a b d; }"},
        {"{ x = MULT_FLOAT_FLOAT a b; S = SUB_FLOAT_FLOAT d x; }", "{ S = minus_product d a b; }"},
        {"{ x = MULT_FLOAT_FLOAT a b; y = MULT_FLOAT_FLOAT d e; S = ADD_FLOAT_FLOAT x y; }",
         "{ S = sum_of_products a b d e; }"},
        {"{ x = MULT_FLOAT_FLOAT a b; y = MULT_FLOAT_FLOAT d e; S = SUB_FLOAT_FLOAT x y; }",
         "{ S = difference_of_products a b d e; }"},
        {"{ x = MULT_FLOAT_FLOAT a b; y = MULT_FLOAT_FLOAT d e; S = SUB_FLOAT_FLOAT y x; }",
         "{ S = difference_of_products d e a b; }"},
        {"{ x = MULT_FLOAT_FLOAT a b; x = ADD_FLOAT_FLOAT x d; S = ADD_FLOAT_FLOAT x x; }",
         "{ x = product_plus a b d; S = ADD_FLOAT_FLOAT x x; }"},
        {"{ c = ADD_COLOR_COLOR c1 c2; C = ASSIGN_COLOR_COLOR c; }",
         "{ C = ADD_COLOR_COLOR c1 c2; }"},
        {"{ c = CALL_PRIM_REFRACT c1 c2 1; C = ASSIGN_COLOR_COLOR c; }",
         "{ C = CALL_PRIM_REFRACT c1 c2 1; }"},
        {"{ c = ADD_COLOR_COLOR C c2; C = ASSIGN_COLOR_COLOR c; }",
         "{ C = ADD_COLOR_COLOR C c2; }"},
        // A flag that is set again before it is read.
        {"{ and &f f1; if f2 ( f = BOOL_LESS_THEN_FLOAT_FLOAT S 1; ) and &f f2; if f ( S = "
         "ASSIGN_TO_ZERO_FLOAT; ) }",
         "{ if f2 ( f = BOOL_LESS_THEN_FLOAT_FLOAT S 1; ) and &f f2; if f ( S = "
         "ASSIGN_TO_ZERO_FLOAT; ) }"},
    };
    ExpectRewritten(cases, Fuse);
}

TEST(QxFuse, LeavesValuesThatHaveOtherUses)
{
    static const PassCase cases[] = {
        {"{ x = MULT_FLOAT_FLOAT a b; S = ADD_FLOAT_FLOAT x d; S1 = ADD_FLOAT_FLOAT x d; }", ""},
        {"{ x = MULT_FLOAT_FLOAT a b; S = ADD_FLOAT_FLOAT x x; }", ""},
        {"{ x = MULT_FLOAT_FLOAT a b; S = MULT_FLOAT_FLOAT x d; }", ""},
        {"{ S = MULT_FLOAT_FLOAT a b; S1 = ADD_FLOAT_FLOAT S d; }", ""},
        {"{ c = ADD_COLOR_COLOR c1 c2; C = ASSIGN_COLOR_COLOR c; C1 = ASSIGN_COLOR_COLOR c; }", ""},
        // The factor has changed before the addition.
        {"{ x = MULT_FLOAT_FLOAT a b; a = ASSIGN_TO_ZERO_FLOAT; S = ADD_FLOAT_FLOAT x d; }", ""},
        // Another path leads between the two, other points need the old value, or both
        // instructions are uniform.
        {"{ x = MULT_FLOAT_FLOAT a b; A: S = ADD_FLOAT_FLOAT x d; if g goto A; }", ""},
        {"{ x = MULT_FLOAT_FLOAT a b; if f ( S = ADD_FLOAT_FLOAT x d; ) S1 = ASSIGN_FLOAT_FLOAT x; "
         "}",
         ""},
        {"once u = MULT_FLOAT_FLOAT u1 u2; once u3 = ADD_FLOAT_FLOAT u 1;", ""},
        // Only cheap kernels read all operands of a point before they write its result.
        {"{ c = CALL_PRIM_REFRACT C c1 1; C = ASSIGN_COLOR_COLOR c; }", ""},
    };
    ExpectRewritten(cases, Fuse);
}

TEST(QxFuse, MovesInstructionsToTheCopiesOfTheirResults)
{
    static const PassCase cases[] = {
        {"{ x = ADD_FLOAT_FLOAT y 1; S1 = MULT_FLOAT_FLOAT S S; S = ASSIGN_FLOAT_FLOAT x; }",
         "{ S1 = MULT_FLOAT_FLOAT S S; S = ADD_FLOAT_FLOAT y 1; }"},
        {"{ x = ADD_FLOAT_FLOAT y 1; y = CALL_PRIM_SIN S; S = ASSIGN_FLOAT_FLOAT x; }", ""},
        {"{ x = ADD_FLOAT_FLOAT y 1; S1 = MULT_FLOAT_FLOAT x S; S = ASSIGN_FLOAT_FLOAT x; }", ""},
        {"{ x = ADD_FLOAT_FLOAT y 1; S1 = MULT_FLOAT_FLOAT S S; S = ASSIGN_FLOAT_FLOAT x; C = "
         "ASSIGN_COLOR_FLOAT x; }",
         ""},
        {"{ x = ADD_FLOAT_FLOAT y 1; A: S1 = MULT_FLOAT_FLOAT S S; S = ASSIGN_FLOAT_FLOAT x; if g "
         "goto A; }",
         ""},
        {"{ x = ADD_FLOAT_FLOAT y 1; if f ( S1 = MULT_FLOAT_FLOAT S S; S = ASSIGN_FLOAT_FLOAT x; ) "
         "}",
         ""},
        // Light may depend on what runs in between, and a cheap function only on its operands.
        {"{ c = CALL_PRIM_DIFFUSE c1; S1 = MULT_FLOAT_FLOAT S S; C = ASSIGN_COLOR_COLOR c; }", ""},
    };
    ExpectRewritten(cases, Fuse);
}

TEST(QxSimplifyMasks, OmitsMasksThatNothingObserves)
{
    static const PassCase cases[] = {
        // Nothing reads x after the brackets; S belongs to the grid.
        {"{ if f ( x = ADD_FLOAT_FLOAT y 1; S = ADD_FLOAT_FLOAT x 1; ) }",
         "{ if f ( all x = ADD_FLOAT_FLOAT y 1; S = ADD_FLOAT_FLOAT x 1; ) }"},
        // Points outside of the brackets keep another value, which is read after the brackets,
        {"{ if f ( x = ADD_FLOAT_FLOAT y 1; S = ADD_FLOAT_FLOAT x 1; ) S = ADD_FLOAT_FLOAT x 1; }",
         ""},
        // in the next iteration of a loop,
        {"{ A: S1 = ADD_FLOAT_FLOAT x 1; if f ( x = ADD_FLOAT_FLOAT y 1; S = ADD_FLOAT_FLOAT x 1; "
         ") "
         "if g goto A; }",
         ""},
        // or after the enclosing brackets.
        {"{ if f ( if not f1 ( x = ADD_FLOAT_FLOAT y 1; S = ADD_FLOAT_FLOAT x 1; ) ) S1 = "
         "ADD_FLOAT_FLOAT x 1; }",
         ""},
        {"{ if f ( if not f1 ( x = ADD_FLOAT_FLOAT y 1; S = ADD_FLOAT_FLOAT x 1; ) ) }",
         "{ if f ( if not f1 ( all x = ADD_FLOAT_FLOAT y 1; S = ADD_FLOAT_FLOAT x 1; ) ) }"},
        // The second half of an `if` with `else` must keep the values that the first half has
        // computed.
        {"{ if f ( x = ADD_FLOAT_FLOAT y 1; ) if not f ( x = ADD_FLOAT_FLOAT y 2; ) S = "
         "ADD_FLOAT_FLOAT x 1; }",
         ""},
        // One result is uniform, and the function is not cheap.
        {"{ if f ( x = CALL_PRIM_SIN y; u = ASSIGN_FLOAT_FLOAT 1; S = ASSIGN_TO_ZERO_FLOAT; ) }",
         ""},
    };
    ExpectRewritten(cases, SimplifyMasks);
}

TEST(QxSimplifyMasks, DropsShortBracketsThatIgnoreTheirMask)
{
    static const PassCase cases[] = {
        {"{ if f ( x = ADD_FLOAT_FLOAT y 1; ) }", "{ all x = ADD_FLOAT_FLOAT y 1; }"},
        {"{ if not f ( x = ADD_FLOAT_FLOAT y 1; z = ADD_FLOAT_FLOAT x 1; ) }",
         "{ all x = ADD_FLOAT_FLOAT y 1; all z = ADD_FLOAT_FLOAT x 1; }"},
        {"{ if f ( x = ADD_FLOAT_FLOAT y 1; z = ADD_FLOAT_FLOAT x 1; a = ADD_FLOAT_FLOAT x 1; ) }",
         "{ if f ( all x = ADD_FLOAT_FLOAT y 1; all z = ADD_FLOAT_FLOAT x 1; all a = "
         "ADD_FLOAT_FLOAT x 1; ) }"},
        {"{ if f ( x = ADD_FLOAT_FLOAT y 1; S = ADD_FLOAT_FLOAT x 1; ) }",
         "{ if f ( all x = ADD_FLOAT_FLOAT y 1; S = ADD_FLOAT_FLOAT x 1; ) }"},
    };
    ExpectRewritten(cases, SimplifyMasks);
}

TEST(QxOmitTests, TurnsCheapBracketsIntoMasks)
{
    static const PassCase cases[] = {
        {"{ if f ( S = ADD_FLOAT_FLOAT S 1; S1 = ADD_FLOAT_FLOAT S 1; ) C = ASSIGN_COLOR_COLOR c; "
         "}",
         "{ where f ( S = ADD_FLOAT_FLOAT S 1; S1 = ADD_FLOAT_FLOAT S 1; ) C = ASSIGN_COLOR_COLOR "
         "c; }"},
        {"{ if f ( C = ASSIGN_COLOR_COLOR c; ) }", "{ where f ( C = ASSIGN_COLOR_COLOR c; ) }"},
        // They would cost more than the test, unless the test was made before.
        {"{ if f ( S = ADD_FLOAT_FLOAT S 1; C = ASSIGN_COLOR_COLOR c; ) }", ""},
        {"{ if f ( S = CALL_PRIM_SIN S1; ) }", ""},
        {"{ if not f goto A; if f ( S = ADD_FLOAT_FLOAT S 1; C = ASSIGN_COLOR_COLOR c; ) A: S1 = "
         "ASSIGN_TO_ZERO_FLOAT; }",
         "{ if not f goto A; where f ( S = ADD_FLOAT_FLOAT S 1; C = ASSIGN_COLOR_COLOR c; ) A: S1 "
         "= ASSIGN_TO_ZERO_FLOAT; }"},
        // The mask is not the flag.
        {"{ if not f ( S = ADD_FLOAT_FLOAT S 1; ) }", ""},
        {"{ if copy f ( f = ASSIGN_BOOL_BOOL f1; ) }", ""},
        {"{ if g ( S = ADD_FLOAT_FLOAT S 1; ) }", ""},
        {"{ if f ( S1 = CALL_PRIM_SIN S1; if f1 ( S = ADD_FLOAT_FLOAT S 1; ) ) }", ""},
    };
    ExpectRewritten(cases, [](DraftText& text) { QxOmitTests(text.Block()); });
}

TEST(QxFuseFlags, CombinesComparisonsAndTestsWithFlags)
{
    static const PassCase cases[] = {
        {"{ f = BOOL_LESS_THEN_FLOAT_FLOAT x 1; and &f f1; if f ( S = ASSIGN_TO_ZERO_FLOAT; ) }",
         "{ f = less_and x 1 f1; if f ( S = ASSIGN_TO_ZERO_FLOAT; ) }"},
        {"{ if f1 ( S = CALL_PRIM_SIN S; all f = BOOL_GREATER_EQUAL_FLOAT_FLOAT x y; ) and &f f1; "
         "if f ( S = ASSIGN_TO_ZERO_FLOAT; ) }",
         "{ if f1 ( S = CALL_PRIM_SIN S; ) f = less_equal_and y x f1; if f ( S = "
         "ASSIGN_TO_ZERO_FLOAT; ) }"},
        {"{ if f1 ( all f = BOOL_LESS_EQUAL_FLOAT_FLOAT x y; ) and &f f1; if f ( S = "
         "ASSIGN_TO_ZERO_FLOAT; ) }",
         "{ f = less_equal_and x y f1; if f ( S = ASSIGN_TO_ZERO_FLOAT; ) }"},
        {"{ f = BOOL_GREATER_THEN_FLOAT_FLOAT S 1; and &f f1; and_not &f1 f; if f1 ( S = "
         "ASSIGN_TO_ZERO_FLOAT; ) }",
         "{ f1 = not_less_and 1 S f1; if f1 ( S = ASSIGN_TO_ZERO_FLOAT; ) }"},
        {"{ f = ASSIGN_BOOL_BOOL f2; and &f f1; and_not &f1 f; if f1 ( S = ASSIGN_TO_ZERO_FLOAT; ) "
         "}",
         "{ f = ASSIGN_BOOL_BOOL f2; and_not &f1 f; if f1 ( S = ASSIGN_TO_ZERO_FLOAT; ) }"},
        {"{ A: S = ADD_FLOAT_FLOAT S 1; g = SET_UNIFORM_BOOL_FLAG f; if g goto A; }",
         "{ A: S = ADD_FLOAT_FLOAT S 1; if f goto A; }"},
        // A flag is used later, the flags differ, or the comparison has a mask.
        {"{ f = BOOL_GREATER_THEN_FLOAT_FLOAT S 1; and &f f1; and_not &f1 f; if f1 ( S = "
         "ASSIGN_TO_ZERO_FLOAT; ) if f ( S = CALL_PRIM_SIN S; ) }",
         "{ f = less_and 1 S f1; and_not &f1 f; if f1 ( S = ASSIGN_TO_ZERO_FLOAT; ) if f ( S = "
         "CALL_PRIM_SIN S; ) }"},
        {"{ f = BOOL_LESS_THEN_FLOAT_FLOAT S 1; and &f f2; and_not &f1 f; if f1 ( S = "
         "ASSIGN_TO_ZERO_FLOAT; ) }",
         "{ f = less_and S 1 f2; and_not &f1 f; if f1 ( S = ASSIGN_TO_ZERO_FLOAT; ) }"},
        {"{ A: S = ADD_FLOAT_FLOAT S 1; g = SET_UNIFORM_BOOL_FLAG f; if g goto A; } once g1 = "
         "ASSIGN_BOOL_BOOL g; if g1 goto B; once u = ASSIGN_TO_ZERO_FLOAT; B:",
         ""},
        {"{ if f1 ( f = BOOL_LESS_THEN_FLOAT_FLOAT x y; ) and &f f1; if f ( S = "
         "ASSIGN_TO_ZERO_FLOAT; ) }",
         ""},
    };
    ExpectRewritten(cases, FuseFlags);
}

TEST(QxFuseFlags, JoinsFlagsThatAreAlwaysEqual)
{
    static const PassCase cases[] = {
        {"{ f = ASSIGN_BOOL_BOOL g1; A: f1 = BOOL_LESS_THEN_FLOAT_FLOAT S 1; and &f1 f; f = "
         "ASSIGN_BOOL_BOOL f1; g = SET_UNIFORM_BOOL_FLAG f; if not g goto B; if f1 ( S = "
         "ADD_FLOAT_FLOAT S 1; ) and_not &f f2; and_not &f1 f2; if f1 ( S = ADD_FLOAT_FLOAT S 2; ) "
         "goto A; B: f = ASSIGN_BOOL_BOOL f2; if f ( S = ASSIGN_TO_ZERO_FLOAT; ) }",
         "{ f = ASSIGN_BOOL_BOOL g1; A: f = less_and S 1 f; if not f goto B; if f ( S = "
         "ADD_FLOAT_FLOAT S 1; ) and_not &f f2; if f ( S = ADD_FLOAT_FLOAT S 2; ) goto A; B: f = "
         "ASSIGN_BOOL_BOOL f2; if f ( S = ASSIGN_TO_ZERO_FLOAT; ) }"},
        // The brackets of the joined flag now write it.
        {"{ f1 = BOOL_LESS_THEN_FLOAT_FLOAT S 1; f = ASSIGN_BOOL_BOOL f1; if f1 ( f = "
         "BOOL_LESS_THEN_FLOAT_FLOAT S 2; ) if f ( S = ASSIGN_TO_ZERO_FLOAT; ) }",
         "{ f = BOOL_LESS_THEN_FLOAT_FLOAT S 1; if copy f ( f = BOOL_LESS_THEN_FLOAT_FLOAT S 2; ) "
         "if f ( S = ASSIGN_TO_ZERO_FLOAT; ) }"},
        // Only one of them changes, they change differently, or another flag changes in between,
        {"{ f1 = BOOL_LESS_THEN_FLOAT_FLOAT S 1; f = ASSIGN_BOOL_BOOL f1; and_not &f1 f2; if f1 ( "
         "S = CALL_PRIM_SIN S; ) if f ( S = ASSIGN_TO_ZERO_FLOAT; ) }",
         ""},
        {"{ f1 = BOOL_LESS_THEN_FLOAT_FLOAT S 1; f = ASSIGN_BOOL_BOOL f1; and_not &f1 f2; and &f "
         "f2; if f1 ( S = CALL_PRIM_SIN S; ) if f ( S = ASSIGN_TO_ZERO_FLOAT; ) }",
         ""},
        {"{ f1 = BOOL_LESS_THEN_FLOAT_FLOAT S 1; f = ASSIGN_BOOL_BOOL f1; and_not &f1 f2; and &f2 "
         "f3; and_not &f f2; if f1 ( S = CALL_PRIM_SIN S; ) if f ( S = ASSIGN_TO_ZERO_FLOAT; ) }",
         ""},
        // or the first is read before it is written, or after the copy has changed.
        {"{ if f1 ( S = ASSIGN_TO_ZERO_FLOAT; ) f1 = BOOL_LESS_THEN_FLOAT_FLOAT S 1; f = "
         "ASSIGN_BOOL_BOOL f1; if f1 ( S = CALL_PRIM_SIN S; ) if f ( S = ASSIGN_TO_ZERO_FLOAT; ) }",
         ""},
        {"{ f1 = BOOL_LESS_THEN_FLOAT_FLOAT S 1; f = ASSIGN_BOOL_BOOL f1; if f2 ( f = "
         "BOOL_LESS_THEN_FLOAT_FLOAT S 2; ) if f1 ( S = CALL_PRIM_SIN S; ) if f ( S = "
         "ASSIGN_TO_ZERO_FLOAT; ) }",
         ""},
    };
    ExpectRewritten(cases, FuseFlags);
}

TEST(QxMergeConditions, MergesBracketsOfTheSameFlag)
{
    static const PassCase cases[] = {
        {"{ if f ( x = ADD_FLOAT_FLOAT y 1; ) if f ( y = CALL_PRIM_SIN x; ) if f ( z = "
         "ADD_FLOAT_FLOAT y 1; ) S = ASSIGN_TO_ZERO_FLOAT; }",
         "{ if f ( x = ADD_FLOAT_FLOAT y 1; y = CALL_PRIM_SIN x; z = ADD_FLOAT_FLOAT y 1; ) S = "
         "ASSIGN_TO_ZERO_FLOAT; }"},
        {"{ if f ( if f1 ( x = ASSIGN_TO_ZERO_FLOAT; ) ) if copy f ( f = ASSIGN_BOOL_BOOL f1; ) if "
         "f ( y = ASSIGN_TO_ZERO_FLOAT; ) }",
         "{ if copy f ( if f1 ( x = ASSIGN_TO_ZERO_FLOAT; ) f = ASSIGN_BOOL_BOOL f1; ) if f ( y = "
         "ASSIGN_TO_ZERO_FLOAT; ) }"},
        {"{ if f ( x = ASSIGN_TO_ZERO_FLOAT; ) if not f ( x = ADD_FLOAT_FLOAT y 1; ) if f1 ( y = "
         "ASSIGN_TO_ZERO_FLOAT; ) }",
         ""},
        {"{ if f ( x = ASSIGN_TO_ZERO_FLOAT; ) A: if f ( y = ASSIGN_TO_ZERO_FLOAT; ) if g goto A; "
         "}",
         ""},
    };
    ExpectRewritten(cases, [](DraftText& text) { QxMergeConditions(text.Block()); });
}

TEST(QxUseStripLocals, MovesWhatLivesInOneStrip)
{
    static const PassCase cases[] = {
        {"{ x = ADD_FLOAT_FLOAT S 1; c = INIT_COLOR x x x; C = ASSIGN_COLOR_COLOR c; }",
         "{~0~1/1024 ~0 = ADD_FLOAT_FLOAT S 1; ~1 = INIT_COLOR ~0 ~0 ~0; C = ASSIGN_COLOR_COLOR "
         "~1; }"},
        // A guard is moved too, in strips of the usual length. Other runs use the same storage.
        {"{ f = BOOL_LESS_THEN_FLOAT_FLOAT S 1; if f ( S = ASSIGN_TO_ZERO_FLOAT; ) } grid S1 = "
         "CALL_PRIM_AREA C; { f1 = BOOL_LESS_THEN_FLOAT_FLOAT S 1; if f1 ( S = "
         "ASSIGN_TO_ZERO_FLOAT; ) }",
         "{~0/256 ~0 = BOOL_LESS_THEN_FLOAT_FLOAT S 1; if ~0 ( S = ASSIGN_TO_ZERO_FLOAT; ) } grid "
         "S1 = CALL_PRIM_AREA C; {~0/256 ~0 = BOOL_LESS_THEN_FLOAT_FLOAT S 1; if ~0 ( S = "
         "ASSIGN_TO_ZERO_FLOAT; ) }"},
        // An instruction for the whole grid uses the same variable for another value.
        {"{ x = ADD_FLOAT_FLOAT S 1; S = ADD_FLOAT_FLOAT x 1; } grid x = CALL_PRIM_AREA C; { S1 = "
         "ADD_FLOAT_FLOAT x 1; }",
         "{~0/1024 ~0 = ADD_FLOAT_FLOAT S 1; S = ADD_FLOAT_FLOAT ~0 1; } grid x = CALL_PRIM_AREA "
         "C; {/1024 S1 = ADD_FLOAT_FLOAT x 1; }"},
        // The variable is live into the strip's next iteration, after the strip, or, at some
        // points, before it.
        {"{ x = ASSIGN_TO_ZERO_FLOAT; A: y = ADD_FLOAT_FLOAT x 1; x = ADD_FLOAT_FLOAT y 1; g = "
         "SET_UNIFORM_BOOL_FLAG f; if g goto A; }",
         "{~0~1/256 ~0 = ASSIGN_TO_ZERO_FLOAT; A: ~1 = ADD_FLOAT_FLOAT ~0 1; ~0 = ADD_FLOAT_FLOAT "
         "~1 1; g = SET_UNIFORM_BOOL_FLAG f; if g goto A; }"},
        {"{ z = ADD_FLOAT_FLOAT S 1; }", "{/1024 z = ADD_FLOAT_FLOAT S 1; }"},
        {"{ if f ( x = ASSIGN_TO_ZERO_FLOAT; ) S = ADD_FLOAT_FLOAT x 1; }",
         "{/256 if f ( x = ASSIGN_TO_ZERO_FLOAT; ) S = ADD_FLOAT_FLOAT x 1; }"},
        // A kernel may read other points, or the points run one after the other.
        {"{ c = INIT_COLOR S S S; S1 = CALL_PRIM_AREA c; }",
         "{/1024 c = INIT_COLOR S S S; S1 = CALL_PRIM_AREA c; }"},
        {"each { x = ADD_FLOAT_FLOAT S 1; u = ADD_FLOAT_FLOAT x 1; }", ""},
    };
    ExpectRewritten(cases, UseStripLocals);
}

TEST(QxLiveness, FindsLiveVariables)
{
    static const struct {
        const char* code;
        const char* result;
        const char* annotated;
    } cases[] = {
        {"{ x = ADD_FLOAT_FLOAT y 1; S = ADD_FLOAT_FLOAT x y; x = ASSIGN_TO_ZERO_FLOAT; }", "",
         "{ [y] x = ADD_FLOAT_FLOAT y 1; [xy] S = ADD_FLOAT_FLOAT x y; [] x = "
         "ASSIGN_TO_ZERO_FLOAT; [] } [] first: y"},
        {"once u = ADD_FLOAT_FLOAT u 1;", "u", "once u = ADD_FLOAT_FLOAT u 1; [u] first: u"},
        {"A: { S = ADD_FLOAT_FLOAT x y; x = ASSIGN_TO_ZERO_FLOAT; } if g goto A;", "",
         "{ [xyg] S = ADD_FLOAT_FLOAT x y; [yg] x = ASSIGN_TO_ZERO_FLOAT; [xyg] } [xyg] if g goto "
         "A; [xyg] first: x y g"},
        // A loop of several basic blocks keeps a variable live around its back edge.
        {"A: { S = ADD_FLOAT_FLOAT x 1; } if g1 goto B; { y = ASSIGN_TO_ZERO_FLOAT; } B: if g goto "
         "A;",
         "",
         "{ [xg1g] S = ADD_FLOAT_FLOAT x 1; [xg1g] } [xg1g] if g1 goto B; [xg1g] { [xg1g] y = "
         "ASSIGN_TO_ZERO_FLOAT; [xg1g] } [xg1g] if g goto A; [xg1g] first: x g1 g"},
        // Points outside of the brackets keep their values,
        {"{ y = ASSIGN_TO_ZERO_FLOAT; if f ( x = ADD_FLOAT_FLOAT y 1; ) S = ADD_FLOAT_FLOAT x 1; }",
         "",
         "{ [xf] y = ASSIGN_TO_ZERO_FLOAT; [yxf] if f ( [y/x] x = ADD_FLOAT_FLOAT y 1; [x/x] ) [x] "
         "S = ADD_FLOAT_FLOAT x 1; [] } [] first: x f"},
        {"{ if not f ( if f1 ( y = ADD_FLOAT_FLOAT x 1; S = ADD_FLOAT_FLOAT y 1; ) ) y = "
         "ASSIGN_TO_ZERO_FLOAT; }",
         "",
         "{ [xff1] if not f ( [xf1] if f1 ( [x] y = ADD_FLOAT_FLOAT x 1; [y] S = ADD_FLOAT_FLOAT y "
         "1; [] ) [] ) [] y = ASSIGN_TO_ZERO_FLOAT; [] } [] first: x f f1"},
        {"{ x = ASSIGN_TO_ZERO_FLOAT; } at f x = ADD_FLOAT_FLOAT y 1; { S = ADD_FLOAT_FLOAT x 1; }",
         "",
         "{ [yf] x = ASSIGN_TO_ZERO_FLOAT; [xyf] } [xyf] at f x = ADD_FLOAT_FLOAT y 1; [x] { [x] S "
         "= ADD_FLOAT_FLOAT x 1; [] } [] first: y f"},
        // but the result of `and` with the flag of the brackets is false there in any case.
        {"{ if f ( f1 = BOOL_LESS_THEN_FLOAT_FLOAT x 1; ) and &f1 f; if f1 ( S = "
         "ASSIGN_TO_ZERO_FLOAT; ) }",
         "",
         "{ [xf] if f ( [xf/f] f1 = BOOL_LESS_THEN_FLOAT_FLOAT x 1; [f1f/f] ) [f1f] and &f1 f; "
         "[f1] if f1 ( [] S = ASSIGN_TO_ZERO_FLOAT; [] ) [] } [] first: x f"},
        {"{ if f ( f1 = BOOL_LESS_THEN_FLOAT_FLOAT x 1; ) and &f1 f2; }", "f1",
         "{ [f1xf2f] if f ( [xf2/f1f2] f1 = BOOL_LESS_THEN_FLOAT_FLOAT x 1; [f1f2/f1f2] ) [f1f2] "
         "and &f1 f2; [f1] } [f1] first: f1 x f2 f"},
        {"lights B; A: { x = ADD_FLOAT_FLOAT y 1; y = ASSIGN_TO_ZERO_FLOAT; } again A; B: { S = "
         "ADD_FLOAT_FLOAT x 1; }",
         "",
         "lights B; [xy] { [y] x = ADD_FLOAT_FLOAT y 1; [x] y = ASSIGN_TO_ZERO_FLOAT; [xy] } [xy] "
         "again A; [xy] { [x] S = ADD_FLOAT_FLOAT x 1; [] } [] first: x y"},
        {"goto A; { S = ADD_FLOAT_FLOAT x y; } A: { S1 = ADD_FLOAT_FLOAT y 1; }", "",
         "goto A; [y] { [xy] S = ADD_FLOAT_FLOAT x y; [y] } [y] { [y] S1 = ADD_FLOAT_FLOAT y 1; [] "
         "} [] first: y"},
    };
    for (const auto& c : cases) {
        DraftText text(c.code);
        EXPECT_EQ(Annotated(text, c.result), c.annotated) << c.code;
    }
}

TEST(QxLiveness, LimitsTheWorkForJumpsThatNeedManyWalks)
{
    // goto N;  1: read u;  stop;  2: goto 1;  3: goto 2;  ...  N: goto N - 1
    for (const std::uint32_t jumps : {30U, 30000U}) {
        DraftText text("goto A; A: once u = ADD_FLOAT_FLOAT u 1;");
        std::vector<QxDraft>& drafts = text.Block().drafts;
        for (std::uint32_t i = 0; i < jumps; ++i) {
            const auto before = static_cast<std::uint32_t>(i == 0 ? 1 : drafts.size() - 1);
            QxDraft& draft = text.Writer().Add(QxCodeStep::Goto);
            draft.code.target = before;
        }
        drafts[0].code.target = static_cast<std::uint32_t>(drafts.size() - 1);
        QxLiveness liveness(text.Block(), text.Storages(), std::nullopt);
        EXPECT_EQ(liveness.Compute(), jumps < 1000) << jumps;
    }
}
