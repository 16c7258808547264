#include "lowering/SlcGenInterCode.h"

#include <gtest/gtest.h>

#include "lowering/LowerTestHelp.h"

namespace {

TEST(SlcGenConditions, JumpsByUniformConditions)
{
    static const LowerCase cases[] = {
        {"if (k < 1) o = 1;", "u0 = k < 1; !u0? goto L0; { o = 1; } L0:"},
        {"if (k < 1) o = 1; else o = 0;",
         "u0 = k < 1; !u0? goto L0; { o = 1; } goto L1; L0: { o = 0; } L1:"},
        {"if (w < 1) { if (k < 1) o = 1; }", "{ f0 = w < 1; } u0 = any f0; u0?( u1 = k < 1; ) !u0? "
                                             "goto L0; !u1? goto L0; { f0?( o = 1; ) } L0:"},
        {"if (w < 1) { if (k < 1) o = 1; else o = 0; }",
         "{ f0 = w < 1; } u0 = any f0; u0?( u1 = k < 1; ) !u0? goto L0; !u1? goto L1; { f0?( o = "
         "1; ) } goto L0; L1: { f0?( o = 0; ) } L0:"},
    };
    ExpectCode(cases);
}

TEST(SlcGenConditions, GuardsByVaryingConditions)
{
    static const LowerCase cases[] = {
        {"if (w < 1) o = 1;", "{ f0 = w < 1; } u0 = any f0; { f0?( o = 1; ) }"},
        {"if (w < 1) o = 1; else o = 0;", "{ f0 = w < 1; } u0 = any f0; { f0?( o = 1; ) } f0 = not "
                                          "f0; u0 = any f0; { f0?( o = 0; ) }"},
        {"if (w < 1) { if (u < 1) o = 1; else o = 0; }",
         "{ f0 = w < 1; } u0 = any f0; { f0?( f1 = u < 1; ) } { !f0?( f1 = false; ) } u1 = any f1; "
         "{ f1?( o = 1; ) } f1 = f0 but not f1; u1 = any f1; { f1?( o = 0; ) }"},
        {"uniform float z; if (w < 1) z = 1;", "{ f0 = w < 1; } u0 = any f0; u0?( z_1 = 1; )"},
    };
    ExpectCode(cases);
}

TEST(SlcGenConditions, ChoosesValues)
{
    static const LowerCase cases[] = {
        {"o = w < 1 ? 2 : 3;", "{ f0 = w < 1; } u0 = any f0; { f0?( o = 2; ) } f0 = not f0; u1 = "
                               "any f0; { f0?( o = 3; ) }"},
        {"o = k < 1 ? 2 : w;", "u0 = k < 1; !u0? goto L0; { o = 2; } goto L1; L0: { o = w; } L1:"},
        {"uniform float z; z = k < 1 ? 2 : 3;",
         "u0 = k < 1; !u0? goto L0; z_1 = 2; goto L1; L0: z_1 = 3; L1:"},
        {"color c; c = k < 1 ? 2 : c;",
         "u0 = k < 1; !u0? goto L0; { c_1 = 2; } goto L1; L0: { c_1 = c_1; } L1:"},
        {"o = w < 1 ? 2 : Du(o);",
         "{ f0 = w < 1; } u0 = any f0; { f0?( t0 = 2; ) } f0 = not f0; u1 = any f0; t1 = "
         "DU_FLOAT(o, du) simd at f0; { f0?( t0 = t1; ) } { o = t0; }"},
        {"if (w < 1) o = u < 1 ? 2 : 3;",
         "{ f0 = w < 1; } u0 = any f0; { f0?( f1 = u < 1; ) } { !f0?( f1 = false; ) } u1 = any f1; "
         "{ f1?( o = 2; ) } f1 = f0 but not f1; u2 = any f1; { f1?( o = 3; ) }"},
        {"if (w < 1) o = k < 1 ? 2 : 3;",
         "{ f0 = w < 1; } u0 = any f0; u0?( u1 = k < 1; ) !u0? goto L0; !u1? goto L1; u0?( t0 = 2; "
         ") goto L0; L1: u0?( t0 = 3; ) L0: { f0?( o = t0; ) }"},
    };
    ExpectCode(cases, PlainOptionsWith(&SlcOptionsControl::m_assignInPlace));
}

TEST(SlcGenConditions, RecyclesFlags)
{
    static const LowerCase cases[] = {
        {"if (w < 1) o = 1; if (u < 1) o = 2; if (k < 1) o = 3;",
         "{ f0 = w < 1; } u0 = any f0; { f0?( o = 1; ) } { f0 = u < 1; } u0 = any f0; { f0?( o = "
         "2; ) } u0 = k < 1; !u0? goto L0; { o = 3; } L0:"},
        {"if (w < u || u < v) o = 1; if (v < w) o = 2;",
         "{ f0 = w < u; } f1 = not f0; u0 = any f1; { f1?( f1 = u < v; ) } f0 = f0 or f1; u0 = any "
         "f0; { f0?( o = 1; ) } { f0 = v < w; } u0 = any f0; { f0?( o = 2; ) }"},
    };
    ExpectCode(cases, PlainOptionsWith(&SlcOptionsControl::m_reuseBoolFlags));
}

}  // namespace
