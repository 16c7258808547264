#include "lowering/SlcGenInterCode.h"

#include <gtest/gtest.h>

#include "lowering/LowerTestHelp.h"

namespace {

TEST(SlcGenBodies, EndsAtAnUnguardedReturn)
{
    static const LowerCase cases[] = {
        {"float f(float a) { float r = a; return r; r = 3; } o = f(w) + f(u);",
         "{ r_3 = Assign w; } { r_5 = Assign u; } { t0 = Add r_3 r_5; } { o = Assign t0; }"},
        {"float f(float a) { float r = a; { return r; } r = 3; } o = f(w);",
         "{ r_3 = Assign w; } { o = Assign r_3; }"},
        {"void f(output float a) { a = 3; } f(o);", "{ o = Assign #3; }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenBodies, IsALoopOfOneTripIfPointsReturnEarly)
{
    static const LowerCase cases[] = {
        {"float f(float a) { if (a < 1) return 2; o = 1; } o = f(w);",
         "{ t0 = Assign #0; } { f0 = Assign #true; } u0 = any f0; { f0( f1 = LessThen w #1; ) } { "
         "!f0( f1 = Assign #false; ) } u1 = any f1; { f1( t0 = Assign #2; ) } { f1( break f1 f0; ) "
         "} u1 = any f1; u0 = any f0; { f0( o = Assign #1; ) } L0: { o = Assign t0; }"},
        {"float f(float a) { if (a < 1) return 2; } if (w < 1) o = f(u);",
         "{ f0 = LessThen w #1; } u0 = any f0; { f0( t0 = Assign #0; ) } f1 = AssignSIMD f0; u1 = "
         "any f1; { f1( f2 = LessThen u #1; ) } { !f1( f2 = Assign #false; ) } u2 = any f2; { f2( "
         "t0 = Assign #2; ) } { f2( break f2 f1; ) } u2 = any f2; u1 = any f1; L0: { f0( o = "
         "Assign t0; ) }"},
        {"float f(float a) { while (a < 1) { if (a < 0) return 2; } } o = f(w);",
         "{ t0 = Assign #0; } { f0 = Assign #true; } u0 = any f0; f1 = AssignSIMD f0; L0: { f1( f2 "
         "= LessThen w #1; ) } { !f1( f2 = Assign #false; ) } f1 = AssignSIMD f2; u1 = any f1; "
         "!u1? goto L1; { f2( f3 = LessThen w #0; ) } { !f2( f3 = Assign #false; ) } u2 = any f3; "
         "{ f3( t0 = Assign #2; ) } { f3( break f1 f3 f2 f0; ) } u2 = any f3; u1 = any f2; u0 = "
         "any f0; goto L0; L1: L2: { o = Assign t0; }"},
        {"uniform float z; float f(float a) { if (a < 1) return 2; } z = f(k);",
         "{ t0 = Assign #0; } { f0 = Assign #true; } u0 = any f0; u0( u1 = LessThen k #1; ) { f0( "
         "f1 = Assign u1; ) } { !f0( f1 = Assign #false; ) } u2 = any f1; { f1( t0 = Assign #2; ) "
         "} { f1( break f1 f0; ) } u2 = any f1; u0 = any f0; L0: { t1 = Assign t0; } z_1 = Assign "
         "t1;"},
    };
    ExpectCode(cases);
}

TEST(SlcGenBodies, GivesZeroWithoutAReturn)
{
    static const LowerCase cases[] = {
        {"float f() { o = 1; } o = f();", "{ o = Assign #1; } t0 = Assign #0; { o = Assign t0; }"},
        {"string f() { o = 1; } string z = f();",
         "{ o = Assign #1; } t0 = Assign \"\"; { z_1 = Assign t0; }"},
    };
    ExpectCode(cases);
}

}  // namespace
