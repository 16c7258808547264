#include "lowering/SlcGenInterCode.h"

#include <gtest/gtest.h>

#include "lowering/LowerTestHelp.h"

namespace {

TEST(SlcGenRelations, ComparesIntoOneFlagAndPushesNegationDown)
{
    static const LowerCase cases[] = {
        {"if (w < u) o = 1;", "{ f0 = w < u; } u0 = any f0; { f0?( o = 1; ) }"},
        {"if (!(w < u)) o = 1;", "{ f0 = w >= u; } u0 = any f0; { f0?( o = 1; ) }"},
        {"if (!!(w <= u)) o = 1;", "{ f0 = w <= u; } u0 = any f0; { f0?( o = 1; ) }"},
        {"if (!(w == u)) o = 1;", "{ f0 = w != u; } u0 = any f0; { f0?( o = 1; ) }"},
        {"if (!(w > u && u >= v)) o = 1;",
         "{ f0 = w <= u; } f1 = not f0; u0 = any f1; { f1?( f1 = u < v; ) } f0 = f0 or f1; u1 = "
         "any f0; { f0?( o = 1; ) }"},
        {"if (!(w != u || u < v)) o = 1;",
         "{ f0 = w == u; } u0 = any f0; { f0?( f0 = u >= v; ) } u1 = any f0; { f0?( o = 1; ) }"},
        {"color c; if (c == (1, 0, 0)) o = 1;",
         "t0 = point(1, 0, 0); t1 = t0; { f0 = c_1 == t1; } u0 = any f0; { f0?( o = 1; ) }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenRelations, EvaluatesTheRightSideOnlyWhereTheLeftDoesNotDecide)
{
    static const LowerCase cases[] = {
        {"if (w < u && u < v) o = 1;",
         "{ f0 = w < u; } u0 = any f0; { f0?( f0 = u < v; ) } u1 = any f0; { f0?( o = 1; ) }"},
        {"if (w < u || u < v) o = 1;", "{ f0 = w < u; } f1 = not f0; u0 = any f1; { f1?( f1 = u < "
                                       "v; ) } f0 = f0 or f1; u1 = any f0; { f0?( o = 1; ) }"},
        {"if (w < 1 && k < 1) o = 1;", "{ f0 = w < 1; } u0 = any f0; u0?( u1 = k < 1; ) { f0?( f0 "
                                       "= u1; ) } u2 = any f0; { f0?( o = 1; ) }"},
        {"if (w < 1 || k < 1) o = 1;",
         "{ f0 = w < 1; } f1 = not f0; u0 = any f1; u0?( u1 = k < 1; ) { f1?( f1 = u1; ) } f0 = f0 "
         "or f1; u2 = any f0; { f0?( o = 1; ) }"},
        {"if (w < 1 || (u < 1 && v < 1)) o = 1;",
         "{ f0 = w < 1; } f1 = not f0; u0 = any f1; { f1?( f1 = u < 1; ) } u1 = any f1; { f1?( f1 "
         "= v < 1; ) } f0 = f0 or f1; u2 = any f0; { f0?( o = 1; ) }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenRelations, KeepsFlagsFalseOutsideTheirCondition)
{
    static const LowerCase cases[] = {
        {"if (w < 1) { if (u < 1) o = 1; }",
         "{ f0 = w < 1; } u0 = any f0; { f0?( f1 = u < 1; ) } { !f0?( f1 = false; ) } u1 = any f1; "
         "{ f1?( o = 1; ) }"},
        {"if (w < 1) { if (u < 1 && v < 1) o = 1; }",
         "{ f0 = w < 1; } u0 = any f0; { f0?( f1 = u < 1; ) } { !f0?( f1 = false; ) } u1 = any f1; "
         "{ f1?( f1 = v < 1; ) } u2 = any f1; { f1?( o = 1; ) }"},
        {"if (w < 1) { if (u < 1 || v < 1) o = 1; }",
         "{ f0 = w < 1; } u0 = any f0; { f0?( f1 = u < 1; ) } { !f0?( f1 = false; ) } f2 = f0 but "
         "not f1; u1 = any f2; { f2?( f2 = v < 1; ) } f1 = f1 or f2; u2 = any f1; { f1?( o = 1; ) "
         "}"},
        {"if (w < 1) { if (k < 1 && u < 1) o = 1; }",
         "{ f0 = w < 1; } u0 = any f0; u0?( u1 = k < 1; ) { !u1?( f1 = u1; ) } { u1?( f1 = u < 1; "
         ") } { !f0?( f1 = false; ) } u2 = any f1; { f1?( o = 1; ) }"},
        {"if (w < 1) { if (k < 1 || u < 1) o = 1; }",
         "{ f0 = w < 1; } u0 = any f0; u0?( u1 = k < 1; ) { u1?( f1 = u1; ) } { !u1?( f1 = u < 1; "
         ") } { !f0?( f1 = false; ) } u2 = any f1; { f1?( o = 1; ) }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenRelations, CorrectsTheValueForAUniformLeftSide)
{
    static const LowerCase cases[] = {
        {"if (k < 1 && k < 2) o = 1;",
         "u0 = k < 1; u0?( u0 = k < 2; ) !u0? goto L0; { o = 1; } L0:"},
        {"if (k < 1 && w < 1) o = 1;",
         "u0 = k < 1; { !u0?( f0 = u0; ) } { u0?( f0 = w < 1; ) } u1 = any f0; { f0?( o = 1; ) }"},
        {"if (k < 1 || w < 1) o = 1;",
         "u0 = k < 1; { u0?( f0 = u0; ) } { !u0?( f0 = w < 1; ) } u1 = any f0; { f0?( o = 1; ) }"},
        {"if (k < 1 && (u < 1 || v < 1)) o = 1;",
         "u0 = k < 1; !u0? goto L0; { f0 = u < 1; } f1 = not f0; u1 = any f1; { f1?( f1 = v < 1; ) "
         "} f0 = f0 or f1; goto L1; L0: { f0 = u0; } L1: u2 = any f0; { f0?( o = 1; ) }"},
        {"if (k < 1 || (u < 1 && v < 1)) o = 1;",
         "u0 = k < 1; u0? goto L0; { f0 = u < 1; } u1 = any f0; { f0?( f0 = v < 1; ) } goto L1; "
         "L0: { f0 = u0; } L1: u2 = any f0; { f0?( o = 1; ) }"},
        {"if (k < 1 && (k < 2 || k < 3)) o = 1;",
         "u0 = k < 1; !u0? goto L0; u1 = k < 2; !u1?( u1 = k < 3; ) u0 = u1; L0: !u0? goto L1; { o "
         "= 1; } L1:"},
        {"if (k < 1 || (k < 2 && k < 3)) o = 1;",
         "u0 = k < 1; u0? goto L0; u1 = k < 2; u1?( u1 = k < 3; ) u0 = u1; L0: !u0? goto L1; { o = "
         "1; } L1:"},
    };
    ExpectCode(cases);
}

TEST(SlcGenRelations, HasSideEffectsOnlyWhereTheRightSideRuns)
{
    static const LowerCase cases[] = {
        {"if (w < 1 && (o = u) < w) o = 1;", "{ f0 = w < 1; } u0 = any f0; { f0?( o = u; ) } { "
                                             "f0?( f0 = o < w; ) } u1 = any f0; { f0?( o = 1; ) }"},
        {"if (w < 1 || (o = u) < w) o = 1;",
         "{ f0 = w < 1; } f1 = not f0; u0 = any f1; { f1?( o = u; ) } { f1?( f1 = o < w; ) } f0 = "
         "f0 or f1; u1 = any f0; { f0?( o = 1; ) }"},
        {"if (w < 1 || (v < 1 || (o = u) < w)) o = 1;",
         "{ f0 = w < 1; } f1 = not f0; u0 = any f1; { f1?( f2 = v < 1; ) } { !f1?( f2 = false; ) } "
         "f3 = f1 but not f2; u1 = any f3; { f3?( o = u; ) } { f3?( f3 = o < w; ) } f2 = f2 or f3; "
         "f0 = f0 or f2; u2 = any f0; { f0?( o = 1; ) }"},
        {"if (k < 1 && (o = u) < w) o = 1;",
         "u0 = k < 1; !u0? goto L0; o <- u; { f0 = o < w; } goto L1; L0: { f0 = u0; } L1: u1 = any "
         "f0; { f0?( o = 1; ) }"},
        {"if (k < 1 || (o = u) < w) o = 1;",
         "u0 = k < 1; u0? goto L0; o <- u; { f0 = o < w; } goto L1; L0: { f0 = u0; } L1: u1 = any "
         "f0; { f0?( o = 1; ) }"},
        {"uniform float z; if (k < 1 && (z = 2) < k) o = 1;",
         "u0 = k < 1; !u0? goto L0; z_1 = 2; u1 = z_1 < k; u0 = u1; L0: !u0? goto L1; { o = 1; } "
         "L1:"},
        {"if (w < 1) { if (k < 1 && (o = u) < w) o = 1; }",
         "{ f0 = w < 1; } u0 = any f0; u0?( u1 = k < 1; ) !u0? goto L0; !u1? goto L0; { f0?( o = "
         "u; ) } { f0?( f1 = o < w; ) } { !f0?( f1 = false; ) } goto L1; L0: { f0?( f1 = u1; ) } { "
         "!f0?( f1 = false; ) } L1: u2 = any f1; { f1?( o = 1; ) }"},
    };
    ExpectCode(cases, PlainOptionsWith(&SlcOptionsControl::m_simdInstructions));
}

}  // namespace
