#include "lowering/SlcGenInterCode.h"

#include <gtest/gtest.h>

#include "lowering/LowerTestHelp.h"

namespace {

TEST(SlcGenBodies, EndAtAnUnguardedReturn)
{
    static const LowerCase cases[] = {
        {"float f(float a) { float r = a; return r; r = 3; } o = f(w) + f(u);",
         "{ r_3 = w; } { r_5 = u; } { t0 = r_3 + r_5; } { o = t0; }"},
        {"float f(float a) { float r = a; { return r; } r = 3; } o = f(w);",
         "{ r_3 = w; } { o = r_3; }"},
        {"void f(output float a) { a = 3; } f(o);", "{ o = 3; }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenBodies, AreALoopOfOneIterationIfPointsReturnEarly)
{
    static const LowerCase cases[] = {
        {"float f(float a) { if (a < 1) return 2; o = 1; } o = f(w);",
         "{ t0 = 0; } { f0 = true; } u0 = any f0; { f0?( f1 = w < 1; ) } { !f0?( f1 = false; ) } "
         "u1 = any f1; { f1?( t0 = 2; ) } { f1?( break f1 f0 to L0; ) } u1 = any f1; u0 = any f0; "
         "{ f0?( o = 1; ) } L0: { o = t0; }"},
        {"float f(float a) { if (a < 1) return 2; } if (w < 1) o = f(u);",
         "{ f0 = w < 1; } u0 = any f0; { f0?( t0 = 0; ) } f1 <- f0; u1 = any f1; { f1?( f2 = u < "
         "1; ) } { !f1?( f2 = false; ) } u2 = any f2; { f2?( t0 = 2; ) } { f2?( break f2 f1 to L0; "
         ") } u2 = any f2; u1 = any f1; L0: { f0?( o = t0; ) }"},
        {"float f(float a) { while (a < 1) { if (a < 0) return 2; } } o = f(w);",
         "{ t0 = 0; } { f0 = true; } u0 = any f0; f1 <- f0; L0: { f1?( f2 = w < 1; ) } { !f1?( f2 "
         "= false; ) } f1 <- f2; u1 = any f1; !u1? goto L1; { f2?( f3 = w < 0; ) } { !f2?( f3 = "
         "false; ) } u2 = any f3; { f3?( t0 = 2; ) } { f3?( break f1 f3 f2 f0 to L2; ) } u2 = any "
         "f3; u1 = any f2; u0 = any f0; goto L0; L1: L2: { o = t0; }"},
        {"uniform float z; float f(float a) { if (a < 1) return 2; } z = f(k);",
         "{ t0 = 0; } { f0 = true; } u0 = any f0; u0?( u1 = k < 1; ) { f0?( f1 = u1; ) } { !f0?( "
         "f1 = false; ) } u2 = any f1; { f1?( t0 = 2; ) } { f1?( break f1 f0 to L0; ) } u2 = any "
         "f1; u0 = any f0; L0: { t1 = t0; } z_1 = t1;"},
    };
    ExpectCode(cases);
}

TEST(SlcGenBodies, ReturnZeroWithoutAReturn)
{
    static const LowerCase cases[] = {
        {"float f() { o = 1; } o = f();", "{ o = 1; } t0 = 0; { o = t0; }"},
        {"string f() { o = 1; } string z = f();", "{ o = 1; } t0 = \"\"; { z_1 = t0; }"},
    };
    ExpectCode(cases);
}

}  // namespace
