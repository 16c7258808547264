// Every built-in yields the same value at every optimization level, wherever the call is: for all
// points or some, with uniform arguments, in a loop and in a function.

#include <gtest/gtest.h>

#include "shaders/RunShader.h"

namespace {

// The parameters that calls may use in addition to the predefined variables of a surface, and the
// outputs r, c and p.
constexpr const char* k_parameters =
    "float k = 0.5; float two = 2; color hue = color(0.2, 0.5, 0.7); point q = point(1, 2, 3);"
    "matrix m = matrix(1, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1, 0, 3, 0, 0, 1); string w = \"world\";"
    "output varying float r = 0; output varying color c = 0; output varying point p = 0;";

struct CallCase {
    const char* target;  // the output that takes the value, "" for a statement
    const char* call;
};

std::string Statement(const CallCase& c)
{
    return *c.target ? std::string(c.target) + " += " + c.call + ";" : c.call;
}

/// Returns the statement in several places: for all points, under uniform and varying conditions,
/// in loops and in a function.
std::string Everywhere(const std::string& statement)
{
    std::string body;
    for (const std::string& place : {
             statement,
             "if (u > 0.25) { " + statement + " }",
             "if (u > 0.25) r = 3; else { " + statement + " }",
             "if (k > 0) { " + statement + " }",
             "if (u > 0.25) { if (v > 0.5 || k > 1) { " + statement + " } }",
             "uniform float j; for (j = 0; j < 2; j += 1) { if (u * 2 < j) break; " + statement +
                 " }",
             "float j = 0; while (j < u * 3) { j += 1; " + statement + " }",
             "void f() { extern varying float r; extern varying color c; extern varying point p; " +
                 statement + " } f();",
         })
        body += "{ " + place + " }\n";
    return body;
}

void ExpectSameAtEveryLevel(const std::string& source)
{
    SqxMachine machine;
    QxMatrix44 world = QxMatrix44::Identity();
    world[3][0] = 4;
    world[1][1] = 2;
    machine.SetSpace("world", world);
    machine.SetSpace("shader", QxMatrix44::Scaling(0.5F));
    const RunOutcome plain = RunShader(machine, ByteCodeOf(source, 0));
    ASSERT_EQ(plain.fault, "") << source;
    for (int level = 1; level <= 3; ++level)
        ASSERT_EQ(Difference(plain, RunShader(machine, ByteCodeOf(source, level))), "")
            << "-O" << level << ": " << source;
}

template <std::size_t N>
void ExpectAllSame(const CallCase (&cases)[N])
{
    for (const CallCase& c : cases)
        ExpectSameAtEveryLevel("surface test(" + std::string(k_parameters) + ")\n{\n" +
                               Everywhere(Statement(c)) + "}\n");
}

}  // namespace

TEST(BuiltIns, OfNumbers)
{
    static const CallCase cases[] = {
        {"r", "radians(u) + degrees(v) + sin(u) + asin(u) + cos(u) + acos(u) + tan(u)"},
        {"r", "atan(u) + atan(u, 2) + pow(two, u) + exp(u) + sqrt(u) + inversesqrt(u + 1)"},
        // A uniform exponent of 1 is a special case.
        {"r", "pow(u - 0.5, two - 1) + pow(k, two - 1) + pow(u - 0.5, v) + pow(two, two - 1)"},
        {"", "r = pow(r - 0.25, two - 1);"},
        {"r", "log(u + 1) + log(u + 2, 2) + mod(u, 0.3) + abs(u - 1) + sign(u - 0.5)"},
        {"r", "min(u, v) + max(u, 0.3) + min(u, v, k) + max(u, v, k, 2) + clamp(u, 0.2, 0.7)"},
        {"r", "floor(u * 3) + ceil(u * 3) + round(u * 3) + step(0.4, u)"},
        {"r", "smoothstep(0.2, 0.8, u)"},
        {"r", "smoothstep(k, two, u)"},
        {"r", "mix(u, v, 0.3)"},
        {"r", "mix(k, two, u)"},
        {"c", "mix(Cs, hue, k)"},
        {"c", "mix(Cs, hue, u)"},
        {"p", "mix(P, q, k)"},
        {"c", "clamp(Cs, color 0.2, color 0.4) + min(Cs, hue) + max(Cs, hue, Os)"},
        {"p", "clamp(P, point 0.1, q) + min(P, q) + max(P, q)"},
        // The operand of a derivative must have a value at neighbouring points too.
        {"r", "Du(u) + Dv(t) + Deriv(s, u)"},
        {"c", "Du(Cs) + Dv(Cs) + Deriv(Cs, u)"},
        {"p", "Du(P) + Dv(P) + Deriv(P, v)"},
        {"r", "spline(u, 0, k, v, 2, 3) + spline(\"bspline\", u, 0, k, 1, 2, 3, 1)"},
        {"c", "spline(u, Cs, hue, Os, color 1, Cs)"},
        {"p", "spline(\"linear\", u, P, q, P, point 1)"},
        {"", "uniform float a[4] = {0, 1, 3, 2}; r += spline(u, a) + spline(\"bezier\", k, a);"},
        {"", "varying float a[4] = {0, 1, 3, 2}; a[1] = u; r += spline(v, a);"},
        {"", "varying string b = \"linear\"; if (u > 0.4) b = \"bezier\"; r += spline(b, v, 0, k, "
             "1, 2);"},
        {"r", "filterstep(0.4, u) + filterstep(0.2, k)"},
        {"r", "filterstep(0.4, u, \"width\", 2, \"filter\", \"box\")"},
        {"r", "filterstep(0.4, u, v) + filterstep(0.2, k, two) + filterstep(u, k, v)"},
        {"r", "filterstep(0.4, u, v + 1, \"filter\", \"box\", \"width\", k)"},
    };
    ExpectAllSame(cases);
}

TEST(BuiltIns, OfNoise)
{
    static const CallCase cases[] = {
        {"r", "float noise(u * 3) + float noise(u, v) + float noise(P * 4) + float noise(P, u)"},
        {"c", "color noise(u * 3) + color noise(u, v) + color noise(P * 4) + color noise(P, u)"},
        {"p", "point noise(u * 3) + point noise(u, v) + point noise(P * 4) + point noise(P, u)"},
        {"r", "float noise(k) + float cellnoise(k, two) + float pnoise(q, point 2)"},
        {"r", "float cellnoise(u * 3) + float cellnoise(u, v) + float cellnoise(P, v)"},
        {"c", "color cellnoise(u * 3) + color cellnoise(P * 4) + color cellnoise(P, u)"},
        {"p", "point cellnoise(u * 3) + point cellnoise(u, v) + point cellnoise(P)"},
        {"r", "float pnoise(u * 3, 2) + float pnoise(u, v, 2, 3) + float pnoise(P, q)"},
        {"c", "color pnoise(P, u, q, 2) + color pnoise(u, 2)"},
        {"p", "point pnoise(P, u, q, 2) + point pnoise(u, v, 2, 2)"},
    };
    ExpectAllSame(cases);
}

TEST(BuiltIns, OfGeometry)
{
    static const CallCase cases[] = {
        {"r", "xcomp(P) + ycomp(P) + zcomp(P) + comp(Cs, 1) + comp(m, 3, 0) + length(I)"},
        {"", "setxcomp(p, u); setycomp(p, v); setzcomp(p, k); setcomp(c, 1, u);"},
        {"", "matrix a = m; setcomp(a, 1, 2, 5); r += comp(a, 1, 2) + determinant(a);"},
        {"r", "distance(P, q) + length(I) + ptlined(q, point 0, P) + area(P)"},
        {"p", "normalize(I) + faceforward(N, I) + faceforward(N, I, Ng) + reflect(I, N)"},
        {"p", "refract(normalize(I), normalize(N), 0.7)"},
        {"p", "rotate(P, u, point 0, q) + calculatenormal(P)"},
        {"", "float a, b; fresnel(normalize(I), normalize(N), 0.7, a, b); r += a + 10 * b;"},
        {"", "float a, b; vector d, e; fresnel(normalize(I), normalize(N), k, a, b, d, e);"
             " r += a; p += d + e;"},
        {"p", "transform(\"world\", P) + transform(\"world\", \"shader\", P) + transform(m, P)"},
        {"p", "vtransform(\"world\", I) + vtransform(\"shader\", \"world\", I) + vtransform(m, I)"},
        {"p", "ntransform(\"world\", N) + ntransform(\"shader\", \"world\", N) + ntransform(m, N)"},
        {"p", "transform(w, P) + transform(w, \"shader\", P) + transform(w, m, P)"},
        {"p", "transform(\"world\", q) + vtransform(w, \"world\", vector q)"},
        {"p",
         "point \"world\" (u, v, 1) + vector \"shader\" (u, v, 1) + normal \"world\" (1, 2, 3)"},
        {"p", "point \"world\" P + point \"shader\" 1"},
        {"c", "color \"hsv\" (u, 0.5, v) + color \"hsl\" (k, 0.5, 1) + ctransform(\"hsv\", Cs)"},
        {"c", "ctransform(\"YIQ\", \"xyz\", Cs) + ctransform(\"hsv\", hue)"},
        {"", "matrix a = matrix \"world\" 1; a = translate(a, q) * rotate(m, k, vector q);"
             " p += transform(inverse(scale(a, q)), P);"},
        {"r", "depth(P) + depth(q)"},
    };
    ExpectAllSame(cases);
}

TEST(BuiltIns, OfLightAndScene)
{
    static const CallCase cases[] = {
        {"c", "ambient() + diffuse(N)"},
        {"c", "specular(N, -I, 0.1) + specularstd(N, -I, k) + phong(N, -I, 5)"},
        {"c", "specularbrdf(normalize(I), N, -I, 0.2)"},
        {"", "illuminance (P, N, 1.2) { c += Cl * (normalize(L) . N); r += u; }"},
        {"", "illuminance (P) { if (u > comp(Cl, 0)) r += 1; else c += Ol; }"},
        {"", "illuminance (q) { c += Cl; }"},
        {"r", "float texture(\"a.tex\") + float texture(\"a.tex\", u, v, \"blur\", 0.5)"},
        {"c", "color texture(\"a.tex\"[1], s, t, \"swidth\", 2, \"filter\", \"box\")"},
        {"c", "color texture(\"a.tex\", u, v, u, 1, v, 1, 0, 0, \"fill\", k)"},
        {"c", "color environment(\"a.env\", I) + color environment(\"a.env\", I, P, N, I)"},
        {"r", "float environment(\"a.env\", I, \"samples\", 4)"},
        {"r", "float shadow(\"a.shd\", P, \"bias\", 0.1, \"gapbias\", u)"},
        {"c", "color shadow(\"a.shd\", P)"},
        {"c", "transmission(P, q) + trace(P, I)"},
        {"", "float d = 0; c += trace(P, I, d); r += d;"},
        {"r", "occlusion(P, N) + occlusion(P, N, 4, \"angle\", 0.5, \"maxdist\", 3)"},
        {"",
         "vector e = 0; r += occlusion(P, N, 4, \"environmentdir\", e, \"bias\", 0.1); p += e;"},
        {"c", "indirectdiffuse(P, N, 4, \"environmentmap\", \"x\", \"variance\", 0.2)"},
        {"r", "isshadowray() + isindirectray() + raylevel()"},
        {"r", "trace(P, I)"},
    };
    ExpectAllSame(cases);
}

TEST(BuiltIns, OfTextAndMessages)
{
    static const CallCase cases[] = {
        {"", "printf(\"%f %p %s\\n\", u, P, w);"},
        {"", "printf(\"%f\\n\", k); printf(\"%c %m\\n\", hue, m);"},
        {"", "string a = concat(w, \"b\", \"c\"); if (match(\"^w\", a) == 1) r += 1;"},
        {"", "string a = format(\"%f-%s\", k, w); if (a == \"0.5-world\") r += 1;"},
        {"", "uniform float a = 0; r += attribute(\"name\", a) + a;"},
        {"", "varying float a = 0; r += option(\"name\", a) + a;"},
        {"", "color a = 0; r += surface(\"Kd\", a) + displacement(\"nothing\", a); c += a;"},
        {"", "uniform float a[2] = {0, 0}; r += rendererinfo(\"version\", a) + a[0] + a[1];"},
        {"", "uniform float a[2] = {0, 0}; r += textureinfo(w, \"resolution\", a) + a[1];"},
        {"", "uniform string a = \"\"; r += incident(\"name\", a); if (a == \"name\") r += 1;"},
        {"", "point a = 0; r += opposite(\"P\", a) + atmosphere(\"x\", a) + lightsource(\"y\", a);"
             " p += a;"},
    };
    ExpectAllSame(cases);
}
