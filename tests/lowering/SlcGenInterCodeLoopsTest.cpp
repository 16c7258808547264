#include "lowering/SlcGenInterCode.h"

#include <gtest/gtest.h>

#include "lowering/LowerTestHelp.h"

namespace {

TEST(SlcGenLoops, TestsBeforeEachIteration)
{
    static const LowerCase cases[] = {
        {"while (k < 1) o = 1;",
         "{ f0 = true; } L0: u0 = k < 1; !u0? goto L1; { o = 1; } goto L0; L1:"},
        {"while (w < 1) o = 1;",
         "{ f0 = true; } L0: { f0?( f1 = w < 1; ) } { !f0?( f1 = false; ) } f0 <- f1; u0 = any f0; "
         "!u0? goto L1; { f1?( o = 1; ) } goto L0; L1:"},
        {"if (w < 1) { while (u < 1) o = 1; }",
         "{ f0 = w < 1; } u0 = any f0; f1 <- f0; L0: { f1?( f2 = u < 1; ) } { !f1?( f2 = false; ) "
         "} f1 <- f2; u1 = any f1; !u1? goto L1; { f2?( o = 1; ) } goto L0; L1:"},
        {"if (w < 1) { while (k < 1) o = 1; }",
         "{ f0 = w < 1; } u0 = any f0; f1 <- f0; L0: u0?( u1 = k < 1; ) !u0? goto L1; !u1? goto "
         "L1; { f0?( o = 1; ) } goto L0; L1:"},
        {"uniform float i; for (i = 0; i < 3; i += 1) o = i;",
         "i_1 = 0; { f0 = true; } L0: u0 = i_1 < 3; !u0? goto L1; { o = i_1; } L2: i_1 = i_1 + 1; "
         "goto L0; L1:"},
        {"float i; for (i = 0; i < w; i += 1) o = i;",
         "{ i_1 = 0; } { f0 = true; } L0: { f0?( f1 = i_1 < w; ) } { !f0?( f1 = false; ) } f0 <- "
         "f1; u0 = any f0; !u0? goto L1; { f1?( o = i_1; ) } L2: { f1?( i_1 = i_1 + 1; ) } goto "
         "L0; L1:"},
    };
    ExpectCode(cases);
}

TEST(SlcGenLoops, TestsAgainAfterTheBodyForCodeMotion)
{
    static const LowerCase cases[] = {
        {"while (k < 1) o = 1;", "{ f0 = true; } u0 = k < 1; !u0? goto L0; L1: { o = 1; } u1 = k < "
                                 "1; !u1? goto L0; goto L1; L0:"},
        {"while (w < 1) o = 1;",
         "{ f0 = true; } { f0?( f1 = w < 1; ) } { !f0?( f1 = false; ) } f0 <- f1; u0 = any f0; "
         "!u0? goto L0; L1: { f1?( o = 1; ) } { f0?( f1 = w < 1; ) } { !f0?( f1 = false; ) } f0 <- "
         "f1; u0 = any f0; !u0? goto L0; goto L1; L0:"},
        {"while (w < 1 && (u < 1 || v < 1)) o = 1;",
         "{ f0 = true; } { f0?( f1 = w < 1; ) } { !f0?( f1 = false; ) } u0 = any f1; { f1?( f2 = u "
         "< 1; ) } { !f1?( f2 = false; ) } f3 = f1 but not f2; u1 = any f3; { f3?( f3 = v < 1; ) } "
         "f2 = f2 or f3; f0 <- f2; u2 = any f0; !u2? goto L0; L1: { f2?( o = 1; ) } { f0?( f2 = w "
         "< 1; ) } { !f0?( f2 = false; ) } u3 = any f2; { f2?( f4 = u < 1; ) } { !f2?( f4 = false; "
         ") } f5 = f2 but not f4; u4 = any f5; { f5?( f5 = v < 1; ) } f4 = f4 or f5; f2 <- f4; f0 "
         "<- f2; u2 = any f0; !u2? goto L0; goto L1; L0:"},
        {"uniform float i; for (i = 0; i < 3; i += 1) o = i;",
         "i_1 = 0; { f0 = true; } u0 = i_1 < 3; !u0? goto L0; L1: { o = i_1; } L2: i_1 = i_1 + 1; "
         "u1 = i_1 < 3; !u1? goto L0; goto L1; L0:"},
    };
    ExpectCode(cases, PlainOptionsWith(&SlcOptionsControl::m_codeMotion));
}

TEST(SlcGenLoops, ClearsTheFlagsOfPointsThatLeave)
{
    static const LowerCase cases[] = {
        {"while (w < 1) { break; }",
         "{ f0 = true; } L0: { f0?( f1 = w < 1; ) } { !f0?( f1 = false; ) } f0 <- f1; u0 = any f0; "
         "!u0? goto L1; { f1?( break f0 f1 to L1; ) } u0 = any f1; goto L0; L1:"},
        {"while (w < 1) { if (u < 1) break; o = 1; }",
         "{ f0 = true; } L0: { f0?( f1 = w < 1; ) } { !f0?( f1 = false; ) } f0 <- f1; u0 = any f0; "
         "!u0? goto L1; { f1?( f2 = u < 1; ) } { !f1?( f2 = false; ) } u1 = any f2; { f2?( break "
         "f0 f2 f1 to L1; ) } u1 = any f2; u0 = any f1; { f1?( o = 1; ) } goto L0; L1:"},
        {"while (w < 1) { if (u < 1) continue; o = 1; }",
         "{ f0 = true; } L0: { f0?( f1 = w < 1; ) } { !f0?( f1 = false; ) } f0 <- f1; u0 = any f0; "
         "!u0? goto L1; { f1?( f2 = u < 1; ) } { !f1?( f2 = false; ) } u1 = any f2; { f2?( "
         "continue f2 f1 to L0; ) } u1 = any f2; u0 = any f1; { f1?( o = 1; ) } goto L0; L1:"},
        {"while (k < 1) { if (k < 2) break; }",
         "{ f0 = true; } L0: u0 = k < 1; { f0?( f1 = u0; ) } { !f0?( f1 = false; ) } f0 <- f1; u1 "
         "= any f0; !u1? goto L1; u1?( u2 = k < 2; ) { f1?( f2 = u2; ) } { !f1?( f2 = false; ) } "
         "u3 = any f2; { f2?( break f0 f2 f1 to L1; ) } u3 = any f2; u1 = any f1; goto L0; L1:"},
        {"while (w < 1) { while (u < 1) { if (v < 1) break 2; } }",
         "{ f0 = true; } L0: { f0?( f1 = w < 1; ) } { !f0?( f1 = false; ) } f0 <- f1; u0 = any f0; "
         "!u0? goto L1; f2 <- f1; L2: { f2?( f3 = u < 1; ) } { !f2?( f3 = false; ) } f2 <- f3; u1 "
         "= any f2; !u1? goto L3; { f3?( f4 = v < 1; ) } { !f3?( f4 = false; ) } u2 = any f4; { "
         "f4?( break f2 f0 f4 f3 f1 to L1; ) } u2 = any f4; u1 = any f3; u0 = any f1; goto L2; L3: "
         "goto L0; L1:"},
        {"while (w < 1) { while (u < 1) { if (v < 1) continue 2; } }",
         "{ f0 = true; } L0: { f0?( f1 = w < 1; ) } { !f0?( f1 = false; ) } f0 <- f1; u0 = any f0; "
         "!u0? goto L1; f2 <- f1; L2: { f2?( f3 = u < 1; ) } { !f2?( f3 = false; ) } f2 <- f3; u1 "
         "= any f2; !u1? goto L3; { f3?( f4 = v < 1; ) } { !f3?( f4 = false; ) } u2 = any f4; { "
         "f4?( continue f2 f4 f3 f1 to L0; ) } u2 = any f4; u1 = any f3; u0 = any f1; goto L2; L3: "
         "goto L0; L1:"},
    };
    ExpectCode(cases);
}

TEST(SlcGenLoops, StepsAlsoForPointsThatContinue)
{
    static const LowerCase cases[] = {
        {"float i; for (i = 0; i < w; i += 1) { if (u < 1) break; }",
         "{ i_1 = 0; } { f0 = true; } L0: { f0?( f1 = i_1 < w; ) } { !f0?( f1 = false; ) } f0 <- "
         "f1; u0 = any f0; !u0? goto L1; { f1?( f2 = u < 1; ) } { !f1?( f2 = false; ) } u1 = any "
         "f2; { f2?( break f0 f2 f1 to L1; ) } u1 = any f2; u0 = any f1; L2: { f1?( i_1 = i_1 + 1; "
         ") } goto L0; L1:"},
        {"float i; for (i = 0; i < w; i += 1) { if (u < 1) continue; }",
         "{ i_1 = 0; } { f0 = true; } L0: { f0?( f1 = i_1 < w; ) } { !f0?( f1 = false; ) } f0 <- "
         "f1; u0 = any f0; !u0? goto L1; { f1?( f2 = u < 1; ) } { !f1?( f2 = false; ) } u1 = any "
         "f2; { f2?( continue f2 f1 to L2; ) } u1 = any f2; u0 = any f1; L2: u0 = any f0; { f0?( "
         "i_1 = i_1 + 1; ) } goto L0; L1:"},
    };
    ExpectCode(cases);
}

}  // namespace
