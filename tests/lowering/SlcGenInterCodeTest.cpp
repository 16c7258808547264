#include "lowering/SlcGenInterCode.h"

#include <gtest/gtest.h>

#include "icode/SlcArrayICode.h"
#include "lowering/LowerTestHelp.h"

namespace {

TEST(SlcGenInterCode, LowersArithmeticByTheDetailOfItsOperands)
{
    static const LowerCase cases[] = {
        {"uniform float x = k + 1;", "t0 = Add k #1; x_1 = Assign t0;"},
        {"float x = k + 1;", "t0 = Add k #1; { x_1 = Assign t0; }"},
        {"float x = w - k;", "{ t0 = Sub w k; } { x_1 = Assign t0; }"},
        {"float x = -w;", "{ t0 = UnaryMinus w; } { x_1 = Assign t0; }"},
        {"float x = N . P;", "{ t0 = DotProd N P; } { x_1 = Assign t0; }"},
        {"P = N ^ dPdu;", "{ t0 = CrossProd N dPdu; } { P = Assign t0; }"},
        {"P = (u, v, 0);", "{ t0 = Point u v #0; } { P = Assign t0; }"},
        {"float x; x *= w;", "{ x_1 = Mult x_1 w; }"},
        {"float x; x = x;", ""},
    };
    ExpectCode(cases);
}

TEST(SlcGenInterCode, ComputesIntoTheTargetOfAnAssignment)
{
    static const LowerCase cases[] = {
        {"float x; x = w * 2;", "{ x_1 = Mult w #2; }"},
        {"float x; x = w * 2 + x;", "{ t0 = Mult w #2; } { x_1 = Add t0 x_1; }"},
        {"P = (u, v, 0);", "{ P = Point u v #0; }"},
        {"float x; x = k + 1;", "t0 = Add k #1; { x_1 = Assign t0; }"},
        {"color c; c = (u, v, 0);", "{ t0 = Point u v #0; } { c_1 = Assign t0; }"},
        {"float a[2]; a[1] = w + 1;", "t0 = ArrayRef a_1 #1; { t0 = Add w #1; }"},
        {"float a[2]; float x; x = a[u];", "{ t0 = ArrayRef a_1 u; x_1 = Assign t0; }"},
    };
    ExpectCode(cases, PlainOptionsWith(&SlcOptionsControl::m_assignInPlace));
}

TEST(SlcGenInterCode, AssignsWholeGridsOfPlainTypes)
{
    static const LowerCase cases[] = {
        {"o = w;", "o = AssignSIMD w;"},
        {"float x; x = du;", "{ x_1 = Assign du; }"},
        {"float x; x = k;", "{ x_1 = Assign k; }"},
        {"string a; string b; a = b;", "{ a_1 = Assign b_1; }"},
        {"color c; c = w;", "{ c_1 = Assign w; }"},
    };
    ExpectCode(cases, PlainOptionsWith(&SlcOptionsControl::m_simdInstructions));
}

TEST(SlcGenInterCode, TreatsATripleBesideAColorAsAColor)
{
    static const LowerCase cases[] = {
        {"uniform color c = 1; c = c * (1, 0, 0);",
         "c_1 = Assign #1; t0 = Point #1 #0 #0; t1 = Assign t0; t2 = Mult c_1 t1; c_1 = Assign "
         "t2;"},
        {"uniform color c; c += (1, 0, 0);",
         "t0 = Point #1 #0 #0; t1 = Assign t0; c_1 = Add c_1 t1;"},
        {"uniform color c = -(1, 0, 0);",
         "t0 = Point #1 #0 #0; t1 = Assign t0; t2 = UnaryMinus t1; c_1 = Assign t2;"},
        {"uniform color c = 2 * (1, 0, 0);",
         "t0 = Point #1 #0 #0; t1 = Mult #2 t0; c_1 = Assign t1;"},
    };
    ExpectCode(cases);
}

TEST(SlcGenInterCode, TransformsWhatIsCastFromANamedSpace)
{
    static const LowerCase cases[] = {
        {"float x = float w;", "{ x_1 = Assign w; }"},
        {"vector x = vector P;", "{ x_1 = Assign P; }"},
        {"point x = point \"current\" (u, v, 0);", "{ t0 = Point u v #0; } { x_1 = Assign t0; }"},
        {"uniform point x = point \"shader\" (k, 0, 0);",
         "t0 = Point k #0 #0; t1 = TransformFromSpace t0 \"shader\"; x_1 = Assign t1;"},
        {"normal x = normal \"shader\" (u, v, 0);",
         "{ t0 = Normal u v #0; } t1 = TransformFromSpace t0 \"shader\" simd; { x_1 = Assign t1; "
         "}"},
        {"point x = point \"shader\" P;",
         "{ t0 = TransformFromSpace P \"shader\"; } { x_1 = Assign t0; }"},
        {"point x = point \"shader\" w;",
         "{ t0 = Assign w; } { t1 = TransformFromSpace t0 \"shader\"; } { x_1 = Assign t1; }"},
        {"color x = color \"rgb\" (u, v, 0);", "{ t0 = Color u v #0; } { x_1 = Assign t0; }"},
        {"color x = color \"hsv\" w;",
         "{ t0 = Color w w w; } t1 = TransformFromSpace t0 \"hsv\" simd; { x_1 = Assign t1; }"},
        {"color x = color P;", "{ t0 = Assign P; } { x_1 = Assign t0; }"},
        {"uniform matrix x = matrix k;", "t0 = Assign k; x_1 = Assign t0;"},
        {"uniform matrix x = matrix \"shader\" 2;",
         "t0 = Assign #2; t1 = ConcatSpaceMatrix t0 \"shader\"; x_1 = Assign t1;"},
    };
    ExpectCode(cases);
}

TEST(SlcGenInterCode, KeepsAReferenceByVaryingIndexInOneBlockWithItsAccess)
{
    static const LowerCase cases[] = {
        {"uniform float a[2] = {1, 2};",
         "t0 = ArrayRef a_1 #1; t0 = Assign #2; t1 = ArrayRef a_1 #0; t1 = Assign #1;"},
        {"float a[2]; a[0] = w;", "t0 = ArrayRef a_1 #0; { t0 = Assign w; }"},
        {"float a[2]; float x = a[u] + 1;",
         "{ t0 = ArrayRef a_1 u; t1 = Assign t0; } { t2 = Add t1 #1; } { x_1 = Assign t2; }"},
        {"float a[2]; a[u] = w + 1;",
         "{ t0 = Add w #1; } { t1 = ArrayRef a_1 u; t1 = Assign t0; }"},
        {"float a[2]; a[u] -= w;", "{ t0 = ArrayRef a_1 u; t0 = Sub t0 w; }"},
        {"float a[2]; o = a[u] = w;",
         "{ t0 = ArrayRef a_1 u; t0 = Assign w; t1 = Assign t0; } { o = Assign t1; }"},
        {"float a[2]; float i = u; a[i] = (i = 1);",
         "{ i_1 = Assign u; } { t0 = Assign i_1; } { i_1 = Assign #1; } { t1 = ArrayRef a_1 t0; t1 "
         "= Assign i_1; }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenInterCode, ChecksIndicesOnlyIfAsked)
{
    EXPECT_EQ(
        LowerBody("float a[2]; a[u] = 1;",
                  PlainOptionsWith(&SlcOptionsControl::m_checkArrayBounds)),
        "{ CheckValidArrayIndex \"a\" u \"test.sl\"; } { t0 = ArrayRef a_1 u; t0 = Assign #1; "
        "}");
}

TEST(SlcCheckValidArrayIndexICode, MakesALiteralOfAnyFileName)
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
        {"float x; o = x + (x = 2);",
         "{ t0 = Assign x_1; } { x_1 = Assign #2; } { t1 = Add t0 x_1; } { o = Assign t1; }"},
        {"float x; o = x + (w * (x += 2));", "{ t0 = Assign x_1; } { x_1 = Add x_1 #2; } { t1 = "
                                             "Mult w x_1; } { t2 = Add t0 t1; } { o = "
                                             "Assign t2; }"},
        {"float x; o = (x = 1) + (x = 2);", "{ x_1 = Assign #1; } { t0 = Assign x_1; } { x_1 = "
                                            "Assign #2; } { t1 = Add t0 x_1; } { o = "
                                            "Assign t1; }"},
        {"float a[2]; o = a[0] + (a[0] = 2);",
         "t0 = ArrayRef a_1 #0; { t1 = Assign t0; } t2 = ArrayRef a_1 #0; { t2 = Assign #2; } { t3 "
         "= Add t1 t2; } { o = Assign t3; }"},
        {"float a[2]; o = a[0] + a[1];",
         "t0 = ArrayRef a_1 #0; t1 = ArrayRef a_1 #1; { t2 = Add t0 t1; } { o = Assign t2; }"},
        {"float x; float y; o = x + (y = 2);",
         "{ y_1 = Assign #2; } { t0 = Add x_1 y_1; } { o = Assign t0; }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenInterCode, GivesTheOutputsAValueFirst)
{
    LoweredShader surface("surface s() {}");
    EXPECT_EQ(ToText(*surface.Form().m_mainList),
              "{ Ci = Color #0 #0 #0; } { Oi = Color #1 #1 #1; }");
    LoweredShader light("light l() {}");
    EXPECT_EQ(ToText(*light.Form().m_mainList),
              "{ Cl = Color #0 #0 #0; L = Vector #0 #0 #0; } { Ol = Color #1 #1 #1; }");
}

TEST(SlcGenInterCode, ReusesTemporariesAfterEachStatement)
{
    const std::string body = "float x; x = u * v + s; x = s * t + u;";
    EXPECT_EQ(
        LowerBody(body, PlainOptionsWith(&SlcOptionsControl::m_reuseTempVars)),
        "{ t0 = Mult u v; } { t1 = Add t0 s; } { x_1 = Assign t1; } { t1 = Mult s t; } { t0 = "
        "Add t1 u; } { x_1 = Assign t0; }");
}

}  // namespace
