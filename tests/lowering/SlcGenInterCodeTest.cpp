#include "lowering/SlcGenInterCode.h"

#include <gtest/gtest.h>

#include "icode/SlcArrayICode.h"
#include "lowering/LowerTestHelp.h"

namespace {

TEST(SlcGenInterCode, LowersArithmeticByTheDetailOfItsOperands)
{
    static const LowerCase cases[] = {
        {"uniform float x = k + 1;", "t0 = k + 1; x_1 = t0;"},
        {"float x = k + 1;", "t0 = k + 1; { x_1 = t0; }"},
        {"float x = w - k;", "{ t0 = w - k; } { x_1 = t0; }"},
        {"float x = -w;", "{ t0 = -w; } { x_1 = t0; }"},
        {"float x = N . P;", "{ t0 = N . P; } { x_1 = t0; }"},
        {"P = N ^ dPdu;", "{ t0 = N ^ dPdu; } { P = t0; }"},
        {"P = (u, v, 0);", "{ t0 = point(u, v, 0); } { P = t0; }"},
        {"float x; x *= w;", "{ x_1 = x_1 * w; }"},
        {"float x; x = x;", ""},
    };
    ExpectCode(cases);
}

TEST(SlcGenInterCode, ComputesIntoTheTargetOfAnAssignment)
{
    static const LowerCase cases[] = {
        {"float x; x = w * 2;", "{ x_1 = w * 2; }"},
        {"float x; x = w * 2 + x;", "{ t0 = w * 2; } { x_1 = t0 + x_1; }"},
        {"P = (u, v, 0);", "{ P = point(u, v, 0); }"},
        {"float x; x = k + 1;", "t0 = k + 1; { x_1 = t0; }"},
        {"color c; c = (u, v, 0);", "{ t0 = point(u, v, 0); } { c_1 = t0; }"},
        {"float a[2]; a[1] = w + 1;", "t0 = &a_1[1]; { t0 = w + 1; }"},
        {"float a[2]; float x; x = a[u];", "{ t0 = &a_1[u]; x_1 = t0; }"},
    };
    ExpectCode(cases, PlainOptionsWith(&SlcOptionsControl::m_assignInPlace));
}

TEST(SlcGenInterCode, AssignsWholeGridsOfPlainTypes)
{
    static const LowerCase cases[] = {
        {"o = w;", "o <- w;"},
        {"float x; x = du;", "{ x_1 = du; }"},
        {"float x; x = k;", "{ x_1 = k; }"},
        {"string a; string b; a = b;", "{ a_1 = b_1; }"},
        {"color c; c = w;", "{ c_1 = w; }"},
    };
    ExpectCode(cases, PlainOptionsWith(&SlcOptionsControl::m_simdInstructions));
}

TEST(SlcGenInterCode, TreatsATripleBesideAColorAsAColor)
{
    static const LowerCase cases[] = {
        {"uniform color c = 1; c = c * (1, 0, 0);",
         "c_1 = 1; t0 = point(1, 0, 0); t1 = t0; t2 = c_1 * t1; c_1 = t2;"},
        {"uniform color c; c += (1, 0, 0);", "t0 = point(1, 0, 0); t1 = t0; c_1 = c_1 + t1;"},
        {"uniform color c = -(1, 0, 0);", "t0 = point(1, 0, 0); t1 = t0; t2 = -t1; c_1 = t2;"},
        {"uniform color c = 2 * (1, 0, 0);", "t0 = point(1, 0, 0); t1 = 2 * t0; c_1 = t1;"},
    };
    ExpectCode(cases);
}

TEST(SlcGenInterCode, TransformsCastsFromNamedSpaces)
{
    static const LowerCase cases[] = {
        {"float x = float w;", "{ x_1 = w; }"},
        {"vector x = vector P;", "{ x_1 = P; }"},
        {"point x = point \"current\" (u, v, 0);", "{ t0 = point(u, v, 0); } { x_1 = t0; }"},
        {"uniform point x = point \"shader\" (k, 0, 0);",
         "t0 = point(k, 0, 0); t1 = from_space_point(t0, \"shader\"); x_1 = t1;"},
        {"normal x = normal \"shader\" (u, v, 0);",
         "{ t0 = normal(u, v, 0); } t1 = from_space_normal(t0, \"shader\") simd; { x_1 = t1; }"},
        {"point x = point \"shader\" P;",
         "{ t0 = from_space_point(P, \"shader\"); } { x_1 = t0; }"},
        {"point x = point \"shader\" w;",
         "{ t0 = w; } { t1 = from_space_point(t0, \"shader\"); } { x_1 = t1; }"},
        {"color x = color \"rgb\" (u, v, 0);", "{ t0 = color(u, v, 0); } { x_1 = t0; }"},
        {"color x = color \"hsv\" w;",
         "{ t0 = color(w, w, w); } t1 = from_space_color(t0, \"hsv\") simd; { x_1 = t1; }"},
        {"color x = color P;", "{ t0 = P; } { x_1 = t0; }"},
        {"uniform matrix x = matrix k;", "t0 = k; x_1 = t0;"},
        {"uniform matrix x = matrix \"shader\" 2;",
         "t0 = 2; t1 = concat_space(t0, \"shader\"); x_1 = t1;"},
    };
    ExpectCode(cases);
}

TEST(SlcGenInterCode, KeepsAReferenceByVaryingIndexInOneBlockWithItsAccess)
{
    static const LowerCase cases[] = {
        {"uniform float a[2] = {1, 2};", "t0 = &a_1[1]; t0 = 2; t1 = &a_1[0]; t1 = 1;"},
        {"float a[2]; a[0] = w;", "t0 = &a_1[0]; { t0 = w; }"},
        {"float a[2]; float x = a[u] + 1;",
         "{ t0 = &a_1[u]; t1 = t0; } { t2 = t1 + 1; } { x_1 = t2; }"},
        {"float a[2]; a[u] = w + 1;", "{ t0 = w + 1; } { t1 = &a_1[u]; t1 = t0; }"},
        {"float a[2]; a[u] -= w;", "{ t0 = &a_1[u]; t0 = t0 - w; }"},
        {"float a[2]; o = a[u] = w;", "{ t0 = &a_1[u]; t0 = w; t1 = t0; } { o = t1; }"},
        {"float a[2]; float i = u; a[i] = (i = 1);",
         "{ i_1 = u; } { t0 = i_1; } { i_1 = 1; } { t1 = &a_1[t0]; t1 = i_1; }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenInterCode, ChecksAnIndexBeforeItsUse)
{
    EXPECT_EQ(LowerBody("float a[2]; a[u] = 1;",
                        PlainOptionsWith(&SlcOptionsControl::m_checkArrayBounds)),
              "{ check_index(\"a\", u, #2, #1, \"test.sl\"); } { t0 = &a_1[u]; t0 = 1; }");
}

TEST(SlcCheckValidArrayIndexICode, QuotesAnyFileName)
{
    struct NameCase {
        std::string name;
        const char* literal;
    };
    static const NameCase cases[] = {
        {R"(a b.sl)", R"("a b.sl")"},
        {R"(a"b.sl)", R"("a\"b.sl")"},
        {R"(a\"b\.sl)", R"("a\"b\.sl")"},
        {R"(C:\d\)", R"("C:\d\\")"},
    };
    for (const NameCase& c : cases) {
        const SlcCheckValidArrayIndexICode check("a", SlcLexType::Float(0), 1, 1, &c.name);
        EXPECT_EQ(check.m_fileName->GetString(), c.literal);
    }
}

TEST(SlcGenInterCode, ReadsAVariableBeforeALaterPartOfTheExpressionChangesIt)
{
    static const LowerCase cases[] = {
        {"float x; o = x + (x = 2);", "{ t0 = x_1; } { x_1 = 2; } { t1 = t0 + x_1; } { o = t1; }"},
        {"float x; o = x + (w * (x += 2));",
         "{ t0 = x_1; } { x_1 = x_1 + 2; } { t1 = w * x_1; } { t2 = t0 + t1; } { o = t2; }"},
        {"float x; o = (x = 1) + (x = 2);",
         "{ x_1 = 1; } { t0 = x_1; } { x_1 = 2; } { t1 = t0 + x_1; } { o = t1; }"},
        {"float a[2]; o = a[0] + (a[0] = 2);",
         "t0 = &a_1[0]; { t1 = t0; } t2 = &a_1[0]; { t2 = 2; } { t3 = t1 + t2; } { o = t3; }"},
        {"float a[2]; o = a[0] + a[1];",
         "t0 = &a_1[0]; t1 = &a_1[1]; { t2 = t0 + t1; } { o = t2; }"},
        {"float x; float y; o = x + (y = 2);", "{ y_1 = 2; } { t0 = x_1 + y_1; } { o = t0; }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenInterCode, InitializesTheOutputsFirst)
{
    LoweredShader surface("surface s() {}");
    EXPECT_EQ(ToText(*surface.Form().m_mainList),
              "{ Ci = color(0, 0, 0); } { Oi = color(1, 1, 1); }");
    LoweredShader light("light l() {}");
    EXPECT_EQ(ToText(*light.Form().m_mainList),
              "{ Cl = color(0, 0, 0); L = vector(0, 0, 0); } { Ol = color(1, 1, 1); }");
}

TEST(SlcGenInterCode, ReusesTemporariesAfterEachStatement)
{
    const std::string body = "float x; x = u * v + s; x = s * t + u;";
    EXPECT_EQ(LowerBody(body, PlainOptionsWith(&SlcOptionsControl::m_reuseTempVars)),
              "{ t0 = u * v; } { t1 = t0 + s; } { x_1 = t1; } { t1 = s * t; } { t0 = t1 + u; } { "
              "x_1 = t0; }");
}

}  // namespace
