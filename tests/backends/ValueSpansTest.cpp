// Checks where values of a variable are used: at too few places, a loop would lose a value. Also
// checks which calls write directly to the variable that gets a copy of their result.

#include <gtest/gtest.h>

#include "backends/SlcForwardResults.h"
#include "backends/SlcValueSpans.h"
#include "helpers/CodeText.h"

namespace {

/// Returns the places of the list that a value of the variable may cross, or "any".
std::string CrossingsOf(const char* code, const char* variable)
{
    CodeText text;
    const SlcPtr<SlcListICode> list = text.List(code);
    const SlcValueSpans spans(*list);
    std::string places;
    const std::size_t count = list->m_icodes.size();
    std::size_t crossed = 0;
    for (std::size_t place = 0; place <= count; ++place)
        if (spans.MayCross(text.Variable(variable), place)) {
            places += (places.empty() ? "" : " ") + std::to_string(place);
            ++crossed;
        }
    return crossed == count + 1 ? "any" : places;
}

TEST(SlcValueSpans, ReachTheLastReadOfAValue)
{
    static const struct {
        const char* code;
        const char* places;  // of x
    } cases[] = {
        {"{ x = p; y = x; z = x; } { x = 1; y = x; }", "2 3 7"},
        {"{ x = p; } y = x; x = SQRT(p) simd; y = x;", "2 3 5"},
        {"{ x = 1; y = 2; }", ""},
        // A guard changes only a part of the value, unless it computes all points that have one.
        {"{ x = p; f?( x = 1; ) y = x; }", "2 3 4 5"},
        {"{ f?( x = p; y = x; x = 1; y = x; ) }", "3 5"},
        {"{ f?( x = p; ) x = 1; y = x; }", "5"},
        // Points without a value are read.
        {"{ f?( x = 1; ) y = x; }", "any"},
        {"{ y = x; x = 1; }", "any"},
        {"{ x = 1; } L: { y = x; } goto L;", "any"},
        {"x = SQRT(p) simd at f; y = x;", "any"},
        {"{ f?( x = 1; ) !f?( y = x; ) }", "any"},
        {"{ f?( x = 1; ) } y = DU_FLOAT(x, p) simd at f;", "any"},  // reads neighbours
        // The guard of the read selects no other points than that of the write.
        {"{ f?( x = 1; ) y = 2; f?( y = x; ) }", "3 4 5 6"},
        {"{ f?( x = 1; ) } y = POW(x, x) simd at f;", "3 4 5"},
        {"x = POW(p, p) simd at f; { f?( y = x; ) }", "1 2 3"},
        {"{ f?( x = 1; ) !f?( x = 2; ) y = x; }", "3 4 5 6 7"},
        {"{ f?( f1?( x = 1; ) !f1?( x = 2; ) y = x; ) }", "4 5 6 7 8"},
        {"{ f?( f1?( x = 1; ) f1?( y = x; ) ) }", "4 5 6"},
        {"{ f?( x = 1; ) f1?( y = x; ) }", "any"},
        // A changed flag selects other points ...
        {"{ f?( x = 1; ) f = p < 1; f?( y = x; ) }", "any"},
        {"{ f?( x = 1; ) } f = f or f1; { f?( y = x; ) }", "any"},
        {"{ f?( x = 1; f = p < 1; ) f?( y = x; ) }", "any"},
        {"{ f?( x = 1; ) f = p < 1; !f?( x = 2; ) y = x; }", "any"},
        // ... but only some of those before, if it was only cleared or limited by another flag.
        {"{ f?( x = 1; ) f1?( f = false; ) f?( y = x; ) }", "3 4 5 6 7 8"},
        {"{ f?( x = 1; ) f1?( break f to L; ) f?( y = x; ) } L:", "3 4 5 6 7 8"},
        {"{ f?( x = 1; f1 = p < 2; ) !f?( f1 = false; ) f1?( y = x; ) }", "3 4 5 6 7 8 9"},
        {"{ f?( x = 1; f1 = p < 2; ) !f?( f1 = true; ) f1?( y = x; ) }", "any"},
        {"{ f?( x = 1; ) } f1 = f but not f2; { f1?( y = x; ) }", "3 4 5 6 7 8"},
        {"{ !f?( x = 1; ) } f = f1 but not f; { f?( y = x; ) }", "3 4 5 6 7 8"},
        {"{ f?( x = 1; ) } f1 <- f; { f1?( y = x; ) }", "3 4 5 6 7 8"},
        {"{ f?( x = 1; ) } f1 = not f; { f1?( y = x; ) }", "any"},
        {"{ f?( x = 1; ) } f1 <- f; f1 = f1 or f2; { f1?( y = x; ) }", "any"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CrossingsOf(c.code, "x"), c.places) << c.code;
}

TEST(SlcValueSpans, FollowOnlyVaryingLocals)
{
    for (const char* variable : {"u", "r", "p", "a", "Cx"})
        EXPECT_EQ(CrossingsOf("{ u = p; r = &a[u]; Cx = p; Cx = r; }", variable), "any");
}

// What is used after the list crosses its end.
TEST(SlcValueSpans, ReachTheEndForResults)
{
    CodeText text;
    const SlcPtr<SlcListICode> list = text.List("{ x = p; y = x; }");
    const SlcValueSpans spans(*list, {text.Variable("y")});
    EXPECT_TRUE(spans.MayCross(text.Variable("y"), 4));
    EXPECT_FALSE(spans.MayCross(text.Variable("x"), 4));
}

TEST(SlcForwardResults, ReplaceTemporaries)
{
    static const struct {
        const char* code;
        const char* forwarded;
    } cases[] = {
        {"x = SQRT(p) simd; { y = 1; z = x; }", "z = SQRT(p) simd; { y = 1; }"},
        {"x = SQRT(z) simd; { z = x; }", "z = SQRT(z) simd;"},
        {"x = SQRT(p) simd; z <- x;", "z = SQRT(p) simd;"},
        {"x = SQRT(p) simd; y = SQRT(x) simd; { z = y; }", "x = SQRT(p) simd; z = SQRT(x) simd;"},
        // The result is used again, or the destination is used before the copy.
        {"x = SQRT(p) simd; { z = x; y = x; }", ""},
        {"x = SQRT(p) simd; { y = x; z = x; }", ""},
        {"x = SQRT(p) simd; { y = z; z = x; }", ""},
        {"x = SQRT(p) simd; { z = 1; y = z; z = x; }", ""},
        {"x = SQRT(p) simd; { z = x + 1; }", ""},
        // Not all points are copied, or another variable could be in the same array.
        {"x = SQRT(p) simd at f; { z = x; }", ""},
        {"x = SQRT(p) simd; { f?( z = x; ) }", ""},
        {"x = SQRT(p) simd; L: { z = x; } goto L;", ""},
        {"x = SQRT(p) simd; { Cx = x; }", ""},
        {"x = SQRT(p) simd; { p1 = x; }", ""},
        {"x = SQRT(p) simd; { u = x; }", ""},
        {"x = SQRT(p) simd; { r = x; }", ""},
    };
    for (const auto& c : cases) {
        CodeText text;
        const SlcPtr<SlcListICode> list = text.List(c.code);
        const SlcPtr<SlcListICode> forwarded = SlcForwardResults(*list, SlcValueSpans(*list));
        const std::string expected = *c.forwarded ? c.forwarded : c.code;
        EXPECT_EQ(CodeText::Print(*forwarded), CodeText::Print(*CodeText().List(expected)))
            << c.code;
    }
}

}  // namespace
