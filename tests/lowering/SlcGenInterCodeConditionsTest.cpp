#include "lowering/SlcGenInterCode.h"

#include <gtest/gtest.h>

#include "lowering/LowerTestHelp.h"

namespace {

TEST(SlcGenConditions, JumpsByUniformConditions)
{
    static const LowerCase cases[] = {
        {"if (k < 1) o = 1;", "u0 = LessThen k #1; !u0? goto L0; { o = Assign #1; } L0:"},
        {"if (k < 1) o = 1; else o = 0;", "u0 = LessThen k #1; !u0? goto L0; { o = Assign #1; } "
                                          "goto L1; L0: { o = Assign #0; } L1:"},
        {"if (w < 1) { if (k < 1) o = 1; }",
         "{ f0 = LessThen w #1; } u0 = any f0; u0( u1 = LessThen k #1; ) !u0? goto L0; !u1? goto "
         "L0; { f0( o = Assign #1; ) } L0:"},
        {"if (w < 1) { if (k < 1) o = 1; else o = 0; }",
         "{ f0 = LessThen w #1; } u0 = any f0; u0( u1 = LessThen k #1; ) !u0? goto L0; !u1? goto "
         "L1; { f0( o = Assign #1; ) } goto L0; L1: { f0( o = Assign #0; ) } L0:"},
    };
    ExpectCode(cases);
}

TEST(SlcGenConditions, GuardsByVaryingConditions)
{
    static const LowerCase cases[] = {
        {"if (w < 1) o = 1;", "{ f0 = LessThen w #1; } u0 = any f0; { f0( o = Assign #1; ) }"},
        {"if (w < 1) o = 1; else o = 0;",
         "{ f0 = LessThen w #1; } u0 = any f0; { f0( o = Assign #1; ) } f0 = not f0; u0 = any f0; "
         "{ f0( o = Assign #0; ) }"},
        {"if (w < 1) { if (u < 1) o = 1; else o = 0; }",
         "{ f0 = LessThen w #1; } u0 = any f0; { f0( f1 = LessThen u #1; ) } { !f0( f1 = Assign "
         "#false; ) } u1 = any f1; { f1( o = Assign #1; ) } f1 = f0 but not f1; u1 = any f1; { f1( "
         "o = Assign #0; ) }"},
        {"uniform float z; if (w < 1) z = 1;",
         "{ f0 = LessThen w #1; } u0 = any f0; u0( z_1 = Assign #1; )"},
    };
    ExpectCode(cases);
}

TEST(SlcGenConditions, ChoosesValues)
{
    static const LowerCase cases[] = {
        {"o = w < 1 ? 2 : 3;", "{ f0 = LessThen w #1; } u0 = any f0; { f0( o = Assign #2; ) } f0 = "
                               "not f0; u1 = any f0; { f0( o = Assign #3; ) }"},
        {"o = k < 1 ? 2 : w;",
         "u0 = LessThen k #1; !u0? goto L0; { o = Assign #2; } goto L1; L0: { o = Assign w; } L1:"},
        {"uniform float z; z = k < 1 ? 2 : 3;",
         "u0 = LessThen k #1; !u0? goto L0; z_1 = Assign #2; goto L1; L0: z_1 = Assign #3; L1:"},
        {"color c; c = k < 1 ? 2 : c;", "u0 = LessThen k #1; !u0? goto L0; { c_1 = Assign #2; } "
                                        "goto L1; L0: { c_1 = Assign c_1; } L1:"},
        {"o = w < 1 ? 2 : Du(o);",
         "{ f0 = LessThen w #1; } u0 = any f0; { f0( t0 = Assign #2; ) } f0 = not f0; u1 = any f0; "
         "t1 = DU_FLOAT o du simd at f0; { f0( t0 = Assign t1; ) } { o = Assign t0; }"},
        {"if (w < 1) o = u < 1 ? 2 : 3;",
         "{ f0 = LessThen w #1; } u0 = any f0; { f0( f1 = LessThen u #1; ) } { !f0( f1 = Assign "
         "#false; ) } u1 = any f1; { f1( o = Assign #2; ) } f1 = f0 but not f1; u2 = any f1; { f1( "
         "o = Assign #3; ) }"},
        {"if (w < 1) o = k < 1 ? 2 : 3;",
         "{ f0 = LessThen w #1; } u0 = any f0; u0( u1 = LessThen k #1; ) !u0? goto L0; !u1? goto "
         "L1; u0( t0 = Assign #2; ) goto L0; L1: u0( t0 = Assign #3; ) L0: { f0( o = Assign t0; ) "
         "}"},
    };
    ExpectCode(cases, PlainOptionsWith(&SlcOptionsControl::m_assignInPlace));
}

TEST(SlcGenConditions, RecyclesFlags)
{
    static const LowerCase cases[] = {
        {"if (w < 1) o = 1; if (u < 1) o = 2; if (k < 1) o = 3;",
         "{ f0 = LessThen w #1; } u0 = any f0; { f0( o = Assign #1; ) } { f0 = LessThen u #1; } u0 "
         "= any f0; { f0( o = Assign #2; ) } u0 = LessThen k #1; !u0? goto L0; { o = Assign #3; } "
         "L0:"},
        {"if (w < u || u < v) o = 1; if (v < w) o = 2;",
         "{ f0 = LessThen w u; } f1 = not f0; u0 = any f1; { f1( f1 = LessThen u v; ) } f0 = f0 or "
         "f1; u0 = any f0; { f0( o = Assign #1; ) } { f0 = LessThen v w; } u0 = any f0; { f0( o = "
         "Assign #2; ) }"},
    };
    ExpectCode(cases, PlainOptionsWith(&SlcOptionsControl::m_reuseBoolFlags));
}

}  // namespace
