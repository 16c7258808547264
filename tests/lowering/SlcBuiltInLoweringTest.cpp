#include "lowering/SlcBuiltInLowering.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "lowering/LowerTestHelp.h"

namespace {

SlcOptionsControl GridOptions()
{
    return PlainOptionsWith(&SlcOptionsControl::m_simdInstructions);
}

SlcOptionsControl WideningOptions()
{
    SlcOptionsControl options = GridOptions();
    options.m_aggressiveSIMD = true;
    return options;
}

SlcOptionsControl InPlaceOptions()
{
    SlcOptionsControl options = GridOptions();
    options.m_assignInPlace = true;
    return options;
}

TEST(SlcGenBuiltIns, AreInABlockOfTheirDetail)
{
    static const LowerCase cases[] = {
        {"o = sin(w);", "{ t0 = SIN(w); } { o = t0; }"},
        {"uniform float x = sin(k);", "t0 = SIN(k); x_1 = t0;"},
        {"o = noise(P);", "{ t0 = NOISE_FLOAT_3D(P); } { o = t0; }"},
        {"setcomp(P, 0, w);", "{ SETCOMP(P, 0, w); }"},
        {"printf(\"%f\", k);", "{ PRINTF(\"%f\", k) counted; }"},
        {"o = min(w, k, 1, 2);", "{ t0 = MIN_1D(w, k, 1, 2) counted; } { o = t0; }"},
        // The call returns a float, which the declaration promotes.
        {"uniform color c = sqrt(k);", "t0 = SQRT(k); c_1 = t0;"},
    };
    ExpectCode(cases);
}

TEST(SlcGenBuiltIns, CastArgumentsToTheirFormals)
{
    static const LowerCase cases[] = {
        {"o = length(w);", "{ t0 = w; } { t1 = LENGTH(t0); } { o = t1; }"},
        // An argument after the fixed ones is cast to the type that the variable tail declares for
        // it, not to that of the last fixed formal.
        {"o = occlusion(P, N, 16, \"axis\", k);",
         "t0 = k; { t1 = OCCLUSION(P, N, 16, -1, 0, 0, 0, t0, #0); } { o = t1; }"},
        {"color c = spline(w, 1, 2, (1, 0, 0), 4);",
         "t0 = point(1, 0, 0); t1 = 4; t2 = t0; t3 = 2; t4 = 1; { t5 = SPLINE_3D(w, t4, t3, t2, "
         "t1) counted; } { c_1 = t5; }"},
        {"string s = format(\"%f %c\", w, color 1);",
         "t0 = color(1, 1, 1); { t1 = FORMAT(\"%f %c\", w, t0) counted; } { s_1 = t1; }"},
        {"float x; o = mod(x, x = 2);",
         "{ t0 = x_1; } { x_1 = 2; } { t1 = MOD(t0, x_1); } { o = t1; }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenBuiltIns, RunForTheWholeGridIfTheirArgumentsAllowIt)
{
    static const LowerCase cases[] = {
        {"o = noise(P);", "o = NOISE_FLOAT_3D(P) simd;"},
        {"o = noise(w) + w;", "t0 = NOISE_FLOAT_1D(w) simd; { o = t0 + w; }"},
        {"uniform float x = noise(k);", "t0 = NOISE_FLOAT_1D(k); x_1 = t0;"},
        {"o = mix(w, v, k);", "o = MIX_1D(w, v, k) simd;"},
        {"o = mix(w, v, u);", "{ o = MIX_1D(w, v, u); }"},
        {"o = mix(w, k, k);", "{ o = MIX_1D(w, k, k); }"},
        {"o = sin(w);", "{ o = SIN(w); }"},
        {"o = random();", "o = RANDOM_FLOAT() simd;"},
        {"uniform float x = random();", "t0 = RANDOM_FLOAT(); x_1 = t0;"},
        // A void call is never lowered to a whole-grid form.
        {"float a; float b; fresnel(I, N, 1.5, a, b);", "{ FRESNEL5(I, N, 1.5, a_1, b_1); }"},
    };
    ExpectCode(cases, InPlaceOptions());
}

TEST(SlcGenBuiltIns, AreLimitedToTheFlagOfAVaryingCondition)
{
    static const LowerCase cases[] = {
        {"if (w > 1) o = noise(P);",
         "{ f0 = w > 1; } u0 = any f0; o = NOISE_FLOAT_3D(P) simd at f0;"},
        {"if (w > 1 && noise(P) > w) o = 1;",
         "{ f0 = w > 1; } u0 = any f0; t0 = NOISE_FLOAT_3D(P) simd at f0; { f0?( f0 = t0 > w; ) } "
         "u1 = any f0; { f0?( o = 1; ) }"},
        // With a uniform left side no varying flag selects the points of the right side.
        {"if (w > 1) { if (k > 1 || noise(P) > w) o = 1; }",
         "{ f0 = w > 1; } u0 = any f0; u0?( u1 = k > 1; ) { !u1?( t0 = NOISE_FLOAT_3D(P); ) } { "
         "u1?( f1 = u1; ) } { !u1?( f1 = t0 > w; ) } { !f0?( f1 = false; ) } u2 = any f1; { f1?( o "
         "= 1; ) }"},
    };
    ExpectCode(cases, InPlaceOptions());
}

TEST(SlcGenBuiltIns, WidenUniformArgumentsIfTheOptionIsSet)
{
    static const LowerCase cases[] = {
        {"o = mix(w, k, 1);", "{ t0 = k; } t1 = MIX_1D(w, t0, 1) simd; o <- t1;"},
        {"o = mix(w, v, u);", "{ t0 = MIX_1D(w, v, u); } o <- t0;"},
        {"uniform float x = mix(k, k, 1);", "t0 = MIX_1D(k, k, 1); x_1 = t0;"},
    };
    ExpectCode(cases, WideningOptions());
}

TEST(SlcGenBuiltIns, FillTheNamedTailOfAFixedArgumentList)
{
    static const LowerCase cases[] = {
        {"o = occlusion(P, N);", "t0 = OCCLUSION(P, N, 0, -1, 0, 0, 0, #0, #0) simd; o <- t0;"},
        {"o = occlusion(P, N, 16, \"maxdist\", 1, \"bias\", 0.1, \"maxdist\", 2);",
         "t0 = OCCLUSION(P, N, 16, -1, 0.1, 2, 0, #0, #0) simd; o <- t0;"},
        {"vector e; o = occlusion(P, N, \"environmentdir\", e);",
         "t0 = OCCLUSION(P, N, 0, -1, 0, 0, 0, #0, e_1) simd; o <- t0;"},
        // An output that is left out is not written.
        {"color c = indirectdiffuse(P, N, 4, \"environmentmap\", \"sky\");",
         "t0 = INDIRECTDIFFUSE(P, N, 4, -1, 0, 0, 0, \"sky\", #0, #0, #0) simd; { c_1 = t0; }"},
        {"color c = indirectdiffuse(P, N, \"occlusion\", o);",
         "t0 = INDIRECTDIFFUSE(P, N, 0, -1, 0, 0, 0, \"\", #0, #0, o) simd; { c_1 = t0; }"},
        {"color c = trace(P, I);", "t0 = TRACE(P, I, #0) simd; { c_1 = t0; }"},
        {"color c = trace(P, I, o);", "t0 = TRACE(P, I, o) simd; { c_1 = t0; }"},
        {"o = trace(P, I);", "t0 = RAYHITTEST(P, I) simd; o <- t0;"},
    };
    ExpectCode(cases, GridOptions());
}

TEST(SlcGenBuiltIns, ReadNeighboursOnlyOnTheWholeGrid)
{
    static const LowerCase cases[] = {
        {"o = Du(w);", "t0 = DU_FLOAT(w, du) simd; { o = t0; }"},
        {"vector x = Dv(P);", "t0 = DV_POINT(P, dv) simd; { x_1 = t0; }"},
        {"o = Deriv(w, v);", "t0 = DERIV_FLOAT(w, v) simd; { o = t0; }"},
        {"o = area(P);", "t0 = AREA(P) simd; { o = t0; }"},
        {"N = calculatenormal(P);", "t0 = CALCULATENORMAL(P, du, dv) simd; { N = t0; }"},
        {"if (w > 1) o = area(P);",
         "{ f0 = w > 1; } u0 = any f0; t0 = AREA(P) simd at f0; { f0?( o = t0; ) }"},
        // A whole-grid form cannot be limited to points whose flag is false, so it runs for all.
        {"if (w > 1) { if (k > 1 || Du(w) > 1) o = 1; }",
         "{ f0 = w > 1; } u0 = any f0; u0?( u1 = k > 1; ) t0 = DU_FLOAT(w, du) simd; { u1?( f1 = "
         "u1; ) } { !u1?( f1 = t0 > 1; ) } { !f0?( f1 = false; ) } u2 = any f1; { f1?( o = 1; ) }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenBuiltIns, WarnOfCallsWithAConstantResult)
{
    struct ZeroCase {
        const char* body;
        const char* code;
        const char* warning;
    };
    static const ZeroCase cases[] = {
        {"o = Du(1);", "{ o = 0; }", "Du() will always return 0 since its parameter is uniform."},
        {"uniform vector x = Dv(point 1);", "t0 = point(1, 1, 1); t1 = point(0, 0, 0); x_1 = t1;",
         "Dv() will always return 0 since its parameter is uniform."},
        {"color x = Du(color 1);", "t0 = color(1, 1, 1); t1 = color(0, 0, 0); { x_1 = t1; }",
         "Du() will always return 0 since its parameter is uniform."},
        {"o = Deriv(w, k);", "{ o = 0; }",
         "Deriv() will always return 0, since at least one of its parameters is uniform."},
        {"o = area(point 1);", "t0 = point(1, 1, 1); { o = 0; }",
         "area() will always return 0 since its parameter is uniform."},
        {"N = calculatenormal(point k);", "t0 = point(k, k, k); t1 = point(0, 0, 0); { N = t1; }",
         "calculatenormal() will always return 0 since its parameter is uniform."},
        {"string s = shadername();", "{ s_1 = \"\"; }",
         "'shadername' function not yet implemented.  Will always return the empty string."},
    };
    for (const ZeroCase& c : cases) {
        EXPECT_EQ(LowerBody(c.body), c.code) << c.body;
        const std::string messages =
            MessagesOf(std::string("displacement t(uniform float k = 1; varying float w = 2; "
                                   "output varying float o = 0) {") +
                       c.body + "}");
        EXPECT_NE(messages.find(c.warning), std::string::npos) << messages;
    }
}

TEST(SlcGenBuiltIns, PassTheElementsOfAnArrayToSpline)
{
    static const LowerCase cases[] = {
        {"uniform float a[2]; o = spline(w, a);",
         "t0 = &a_1[0]; t1 = &a_1[1]; { t2 = SPLINE_1D(w, t0, t1) counted; } { o = t2; }"},
        {"uniform color a[2]; uniform color c = spline(\"bezier\", k, a);",
         "t0 = &a_1[0]; t1 = &a_1[1]; t2 = SPLINE_BASIS_3D(\"bezier\", k, t0, t1) counted; c_1 = "
         "t2;"},
        {"float a[2]; o = spline(k, a);",
         "{ t0 = &a_1[0]; } { t1 = &a_1[1]; } { t2 = SPLINE_1D(k, t0, t1) counted; } { o = t2; }"},
        {"o = spline(\"linear\", w, 1, 2, 3, 4, 5);",
         "{ t0 = SPLINE_BASIS_1D(\"linear\", w, 1, 2, 3, 4, 5) counted; } { o = t0; }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenBuiltIns, PassFilterstepItsInterval)
{
    static const LowerCase cases[] = {
        {"o = filterstep(.5, w);",
         "t0 = interval(w); t1 = FILTERSTEP(0.5, w, t0, 1, \"catmull-rom\") simd; { o = t1; }"},
        {"uniform float x = filterstep(.5, k, \"width\", 2);",
         "t0 = FILTERSTEP(0.5, k, k, 2, \"catmull-rom\"); x_1 = t0;"},
        {"o = filterstep(w, k, \"filter\", \"box\");",
         "t0 = FILTERSTEP(w, k, k, 1, \"box\") simd; { o = t0; }"},
        {"if (v > 1) o = filterstep(.5, w);",
         "{ f0 = v > 1; } u0 = any f0; t0 = interval(w) at f0; t1 = FILTERSTEP(0.5, w, t0, 1, "
         "\"catmull-rom\") simd at f0; { f0?( o = t1; ) }"},
    };
    ExpectCode(cases);
}

TEST(SlcGenBuiltIns, PassMessageFunctionsTheShapeOfTheirTarget)
{
    static const LowerCase cases[] = {
        {"uniform float x; surface(\"Kd\", x);", "t0 = SURFACE(\"Kd\", x_1, 0, 1, 1);"},
        {"color x; surface(\"Cs\", x);", "t0 = SURFACE(\"Cs\", x_1, 1, 3, 1) simd;"},
        {"normal x[3]; option(\"x\", x);", "t0 = OPTION(\"x\", x_1, 1, 9, 3) simd;"},
        {"uniform string s; textureinfo(\"a\", \"b\", s);",
         "t0 = TEXTUREINFO(\"a\", \"b\", s_1, 0, 4, 1);"},
        {"if (w > 1) atmosphere(\"x\", o);",
         "{ f0 = w > 1; } u0 = any f0; t0 = ATMOSPHERE(\"x\", o, 1, 1, 1) simd at f0;"},
        // An element with a varying index is copied in and out.
        {"float x[3]; option(\"x\", x[v]);", "{ t0 = &x_1[v]; t1 = t0; } t2 = OPTION(\"x\", t1, 1, "
                                             "1, 1) simd; { t3 = &x_1[v]; t3 = t1; }"},
        // The answer and the result of the call must not share a variable.
        {"uniform float x; x = option(\"x\", x);", "t0 = OPTION(\"x\", x_1, 0, 1, 1); x_1 = t0;"},
    };
    ExpectCode(cases, InPlaceOptions());
}

TEST(SlcGenBuiltIns, TransformBetweenKnownSpacesInSteps)
{
    static const LowerCase cases[] = {
        {"P = transform(\"shader\", P);", "P = to_space_point(P, \"shader\") simd;"},
        {"P = transform(\"a\", \"current\", P);", "P = from_space_point(P, \"a\") simd;"},
        {"P = transform(\"current\", \"a\", P);", "P = to_space_point(P, \"a\") simd;"},
        {"N = ntransform(\"a\", \"b\", N);",
         "t0 = from_space_normal(N, \"a\") simd; N = to_space_normal(t0, \"b\") simd;"},
        {"P = transform(\"a\", \"a\", N);", "P <- N;"},
        {"uniform point p = transform(\"a\", \"b\", point 1);",
         "t0 = point(1, 1, 1); t1 = from_space_point(t0, \"a\"); t2 = to_space_point(t1, \"b\"); "
         "p_1 = t2;"},
        {"uniform vector p = vtransform(\"a\", vector 1);",
         "t0 = point(1, 1, 1); t1 = to_space_vector(t0, \"a\"); p_1 = t1;"},
        {"if (w > 1) P = transform(\"a\", P);",
         "{ f0 = w > 1; } u0 = any f0; P = to_space_point(P, \"a\") simd at f0;"},
        {"if (w > 1) P = transform(\"a\", \"a\", N);",
         "{ f0 = w > 1; } u0 = any f0; { f0?( P = N; ) }"},
        // These spaces are known at run time only, or are matrices.
        {"uniform string s; P = transform(s, P);", "P = TRANSFORM2(s_1, P) simd;"},
        {"uniform string s; P = transform(s, \"a\", P);", "P = TRANSFORM(s_1, \"a\", P) simd;"},
        {"string s; P = transform(s, P);", "{ P = TRANSFORM2(s_1, P); }"},
        {"uniform matrix m; P = transform(m, P);", "P = TRANSFORM2_MATRIX(m_1, P) simd;"},
        {"uniform matrix m; N = ntransform(\"a\", m, N);",
         "N = NTRANSFORM_MATRIX(\"a\", m_1, N) simd;"},
    };
    ExpectCode(cases, InPlaceOptions());
    EXPECT_EQ(LowerBody("P = transform(\"a\", P);"), "{ t0 = TRANSFORM2(\"a\", P); } { P = t0; }");
}

TEST(SlcGenBuiltIns, EvaluateTheLightsAtP)
{
    const std::string outputs = "{ Ci = color(0, 0, 0); } { Oi = color(1, 1, 1); } ";
    EXPECT_EQ(LowerShader("surface t() { Ci = diffuse(N) + ambient(); }", InPlaceOptions()),
              outputs + "evaluate_lights(); t0 = DIFFUSE(N) simd; evaluate_lights(); t1 = "
                        "AMBIENT() simd; { Ci = t0 + t1; }");
    // Any write of P makes the lights stale.
    EXPECT_EQ(LowerShader("surface t() { P += N; setxcomp(P, 1); setxcomp(N, 1); }"),
              outputs + "{ P = P + N; } forget_lights(); { SETXCOMP(P, 1); } forget_lights(); { "
                        "SETXCOMP(N, 1); }");
}

TEST(SlcGenBuiltIns, AreVaryingIfArgumentsAreInVaryingTemporaries)
{
    // The body of `f` treats its formal as varying, although it is uniform in this call.
    EXPECT_EQ(LowerShader("float f(float x) { return sqrt(x); } "
                          "displacement t() { uniform float a = abs(f(2)); }"),
              "t0 = 2; { t1 = SQRT(t0); } { t2 = ABS(t1); } { a_1 = t2; }");
}

}  // namespace
