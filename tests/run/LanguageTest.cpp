// Compares what shaders compute, at every optimization level, with values that were worked out by
// hand.

#include <gtest/gtest.h>

#include "shaders/RunShader.h"
#include "sqx/SqxDump.h"
#include "sqx/SqxReader.h"

namespace {

/// A surface with one output, and the expected values `r` of the output at 3 by 2 points: u is 0,
/// 0.5, 1 along a row, and v is 0 in the first row and 1 in the second. `body` is the text between
/// its braces, or a whole shader.
struct RunCase {
    std::string body;
    std::vector<float> r;
};

std::string Surface(const std::string& body)
{
    if (body.find(" test(") != std::string::npos)
        return body;
    // If there are three dashes, the text before them goes before the shader: its functions.
    const auto dashes = body.find("---");
    const std::string functions = dashes == std::string::npos ? "" : body.substr(0, dashes);
    const std::string statements = dashes == std::string::npos ? body : body.substr(dashes + 3);
    return functions + "\nsurface test(float one = 1; output varying float r = 0;)\n{\n" +
           statements + "\n}\n";
}

std::string Dump(const std::string& byteCode)
{
    SqxReader reader;
    return reader.Read(byteCode) ? SqxDump(reader.Shader()) : reader.Message();
}

/// Runs a case at each optimization level, up to the first that fails, and compares `r`. `before`
/// is inserted before the text of the case.
void ExpectRuns(const RunCase& c, const std::string& before = "")
{
    RunOutcome expected;
    expected.outputs.push_back({"r", c.r});
    for (int level = 0; level <= 3; ++level) {
        const std::string byteCode = ByteCodeOf(Surface(before + c.body), level);
        if (byteCode.empty())
            return;
        SqxMachine machine;
        RunOutcome outcome = RunShader(machine, byteCode);
        std::erase_if(outcome.outputs, [](const auto& output) { return output.name != "r"; });
        const std::string difference = Difference(outcome, expected);
        EXPECT_EQ(difference, "") << "-O" << level << ": " << c.body << '\n' << Dump(byteCode);
        if (!difference.empty())
            return;
    }
}

template <std::size_t N>
void ExpectAllRun(const RunCase (&cases)[N])
{
    for (const RunCase& c : cases)
        ExpectRuns(c);
}

}  // namespace

TEST(Language, ComputesExpressions)
{
    static const RunCase cases[] = {
        {"r = u + 2 * v;", {0, 0.5, 1, 2, 2.5, 3}},
        {"r = (u - v) / 2 - -u;", {0, 0.75, 1.5, -0.5, 0.25, 1}},
        {"vector a = vector(u, 1, 2); r = a . vector(2, v, 0.5);", {1, 2, 3, 2, 3, 4}},
        {"r = zcomp(vector(1, u, 0) ^ vector(0, 1, 0));", {1, 1, 1, 1, 1, 1}},
        {"color c = color(u, v, 1) * 2; r = comp(c, 0) + 10 * comp(c, 2);",
         {20, 21, 22, 20, 21, 22}},
        {"r = u; r += 1; r *= 2; r -= v; r /= one;", {2, 3, 4, 1, 2, 3}},
        {"r = filterstep(0.25, u, v, \"filter\", \"box\") + 10 * filterstep(0.5, 0, one, "
         "\"width\", 2, \"filter\", \"box\");",
         {5, 5.5, 5.75, 5.75, 6, 6}},
        {"r = mix(1, 3, u) + max(u, v, 0.25);", {1.25, 2.5, 4, 2, 3, 4}},
        {"r = mod(u * 3, 1) + floor(u * 3) * 10 + abs(-v);", {0, 10.5, 30, 1, 11.5, 31}},
        {"matrix m = 2; r = comp(m * m, 1, 1) + determinant(m);", {20, 20, 20, 20, 20, 20}},
        {"string a = \"x\"; if (a == \"x\") r = u; else r = 9;", {0, 0.5, 1, 0, 0.5, 1}},
        {"if (match(\"b+\", concat(\"a\", \"bb\")) == 1) r = 1;", {1, 1, 1, 1, 1, 1}},
        {"surface test(float QX_PI = 2; output varying float r = 0;) { r = QX_PI + floor(PI); }",
         {5, 5, 5, 5, 5, 5}},
    };
    ExpectAllRun(cases);
}

TEST(Language, ComparesConstantsLikeTheRunTime)
{
    static const RunCase cases[] = {
        {"if (0.1 + 0.2 == 0.3) r += 1; if (49 / 49 == 1) r += 2; r += 4 * floor(49 / 49);",
         {7, 7, 7, 7, 7, 7}},
        {"if (12345 * 1001 == 12357345) r = 1; else r = mod(12345 * 1001, 1000);",
         {345, 345, 345, 345, 345, 345}},
        {"if (0.123456789 == 0.1234568) r = 1; if (12345678 == 12345680) r += 2;",
         {3, 3, 3, 3, 3, 3}},
        {"if (1 / 3 * 3 == 1) r = 1; if (0.7 + 0.1 == 0.8) r += 2; if (0 / 0 == 0) r += 4;"
         " r += 8 * floor(log(8, 2)) + 100 * floor(sqrt(2) * sqrt(2)) + 1000 * round(0.5 - 3e-8);",
         {1127, 1127, 1127, 1127, 1127, 1127}},
        // 5.3 is 53 times 0.1 in single precision.
        {"r = floor(mod(5.3, 0.1) * 100) + 10 * mod(8, 4) + 100 * floor(0.3 / 0.1)"
         " + 1000 * mod(-1, 3);",
         {2300, 2300, 2300, 2300, 2300, 2300}},
    };
    ExpectAllRun(cases);
}

TEST(Language, TakesDerivativesFromThePointsOfABranch)
{
    static const RunCase cases[] = {
        {"if (u > 0.25) r = Du(u * u);", {0, 1.5, 1.5, 0, 1.5, 1.5}},
        {"if (u > 0.75) r = 9; else r = Du(u * u);", {0.5, 0.5, 9, 0.5, 0.5, 9}},
        {"if (u > 0.75) r = 1 + Du(u);", {0, 0, 1, 0, 0, 1}},
        {"if (u < 0.25 || v > 0.5) r = Dv(u + 2 * v) + Du(u * u);", {2, 0, 0, 2, 1, 2}},
        {"if (u > 0.25) { if (v < 0.5) r = Dv(v) + Deriv(u * u, u); }", {0, 1.5, 1.5, 0, 0, 0}},
        {"float i = 0; while (i < u * 2) { i += 1; r = Du(u * u); }", {0, 1.5, 0, 0, 1.5, 0}},
        {"if (u > 0.25) { point q = point(u * u, v * 2, 0); r = area(q); }",
         {0, 0.75, 0.375, 0, 0.75, 0.375}},
        {"if (u > 0.25) r = zcomp(calculatenormal(point(u * u, v * 2, 0)));", {0, 3, 3, 0, 3, 3}},
        // The filter is a box around 0.25 and around 1, as wide as the distance between them.
        {"if (u > 0.25) r = filterstep(0.25, u * u, \"filter\", \"box\");", {0, 0.5, 1, 0, 0.5, 1}},
    };
    ExpectAllRun(cases);
}

TEST(Language, StaysInRangeForAnyNumber)
{
    static const RunCase cases[] = {
        {"float z = one - 1; r = spline(z / z, 1, 3, 4, 5) + comp(color(7, 8, 9), z / z);",
         {10, 10, 10, 10, 10, 10}},
        {"float z = one * 1e30; matrix m = matrix(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 6);"
         " r = comp(m, z, z); setcomp(m, -z, z, 2); r += comp(m, 0, 3);",
         {8, 8, 8, 8, 8, 8}},
        {"r = log(5, one) + log(5, 1) + log(8, 2);", {3, 3, 3, 3, 3, 3}},
        {"if (format(\"%d %d\", 1048576 * one, -2.75 * one) == \"1048576 -2\") r = 1;",
         {1, 1, 1, 1, 1, 1}},
    };
    ExpectAllRun(cases);
}

TEST(Language, RunsBranchesOnlyForTheirPoints)
{
    static const RunCase cases[] = {
        {"if (u > 0.25) r = 1;", {0, 1, 1, 0, 1, 1}},
        {"if (u > 0.25) r = 1; else r = 2;", {2, 1, 1, 2, 1, 1}},
        {"if (u > 0.25) { if (v > 0.5) r = 1; else r = 2; } else r = 3;", {3, 2, 2, 3, 1, 1}},
        {"if (one > 0) r = u; else r = 7;", {0, 0.5, 1, 0, 0.5, 1}},
        {"if (u > 0.25) { if (one > 2) r = 1; else r = 4; }", {0, 4, 4, 0, 4, 4}},
        {"if (u > 0.25 && v > 0.5) r = 1;", {0, 0, 0, 0, 1, 1}},
        {"if (u > 0.75 || v > 0.5) r = 1; else r = 2;", {2, 2, 1, 1, 1, 1}},
        {"if (!(u > 0.75 || v > 0.5)) r = 1; else r = 2;", {1, 1, 2, 2, 2, 2}},
        {"if (one > 2 || u > 0.25) r = 1;", {0, 1, 1, 0, 1, 1}},
        {"if (one > 0 || u > 0.25) r = 1;", {1, 1, 1, 1, 1, 1}},
        {"if (one > 0 && u > 0.25) r = 1;", {0, 1, 1, 0, 1, 1}},
        {"if (u > 0.25 || one > 2) r = 1;", {0, 1, 1, 0, 1, 1}},
        {"if (u > 0.25 && one > 0) r = 1;", {0, 1, 1, 0, 1, 1}},
        {"if (v < 0.5) { if (u > 0.75 || u < 0.25) r = 1; else r = 2; }", {1, 2, 1, 0, 0, 0}},
        {"if (v > 0.5 || (u > 0.25 ? 1 : 2) < 1.5) r = 1;", {0, 1, 1, 1, 1, 1}},
        {"r = u > 0.25 ? 1 : 2;", {2, 1, 1, 2, 1, 1}},
        {"r = one > 0 ? u : v;", {0, 0.5, 1, 0, 0.5, 1}},
        {"color c = u > 0.25 ? color(1, 2, 3) : 4; r = comp(c, 2);", {4, 3, 3, 4, 3, 3}},
    };
    ExpectAllRun(cases);
}

TEST(Language, ReadsElementsOnlyWhereTheRightSideRuns)
{
    // The index is outside of the array at the points that the left side or an enclosing condition
    // excludes. A read there is reported, which the comparison of the printed texts finds.
    const std::string before =
        "uniform float A[4] = {1, 2, 3, 4}; float i = u * 2000000, j = 3 * u; ";
    static const RunCase cases[] = {
        {"if (i < 4) if (one == 1 && A[i] > 0.15) r = 1;", {1, 0, 0, 1, 0, 0}},
        {"if (i < 4) if (!(one != 1 || A[i] <= 0.15)) r = 1;", {1, 0, 0, 1, 0, 0}},
        {"if (i < 4) { while (one == 1 && A[i] + r < 3) r += 1; }", {2, 0, 0, 2, 0, 0}},
        {"if (i < 4 && (one == 1 && A[i] > 0.15)) r = 1;", {1, 0, 0, 1, 0, 0}},
        {"if (i >= 4 || (v > 0.5 || A[i] > 1.5)) r = 1;", {0, 1, 1, 1, 1, 1}},
        {"if (i >= 4 || (one == 2 || A[i] > 1.5)) r = 1;", {0, 1, 1, 0, 1, 1}},
        {"if (!(i < 4 && (v <= 0.5 && A[i] <= 1.5))) r = 1;", {0, 1, 1, 1, 1, 1}},
        {"if (!(i < 4 && (v <= 0.5 || A[i] <= 0.5))) r = 1;", {0, 1, 1, 1, 1, 1}},
        {"if (i >= 4 || v > (A[i] > 0.5 ? 0.5 : 2)) r = 1;", {0, 1, 1, 1, 1, 1}},
        {"r = i < 4 ? (one == 1 && A[i] > 0.15 ? 1 : 2) : 3;", {1, 3, 3, 1, 3, 3}},
        {"if (i < 4) if (one == 1 && A[A[i]] > 1.5) r = 1;", {1, 0, 0, 1, 0, 0}},
        {"uniform float k = 2000000 * one; if (u > 2) if (v > 0 && A[k] > 0) r = 1;",
         {0, 0, 0, 0, 0, 0}},
        {"uniform float k = 2000000 * one; if (k < 4 && A[k] > 0) r = 1; else if (u > 0.25) r = 2;",
         {0, 2, 2, 0, 2, 2}},
        {"if (j >= 2 || (v > 0.5 && A[j] < 1.5)) r = A[j];", {0, 0, 4, 1, 0, 4}},
        // No point reaches the uniform left side, so nothing has computed it.
        {"uniform float k = one - 2000000; if (u > 2) if (k < 0 || A[k] > 0) r = 1;",
         {0, 0, 0, 0, 0, 0}},
        {"uniform float k = one - 2000000; if (u > 2) r = k > 0 && (k < 4 && A[k] > 0) ? 1 : 2;",
         {0, 0, 0, 0, 0, 0}},
    };
    for (const RunCase& c : cases)
        ExpectRuns(c, before);
}

TEST(Language, TreatsPAndPsAsOneVariableInSurfaces)
{
    static const RunCase cases[] = {
        {"P = P * 3; point q = Ps; P = point (0, 0, 0); r = xcomp(q) + 10 * ycomp(q);",
         {0, 1.5, 3, 30, 31.5, 33}},
        {"uniform float i; for (i = 0; i < 3; i += 1) { P += point (1, 0, 0);"
         " r += xcomp(Ps * 2); }",
         {12, 15, 18, 12, 15, 18}},
        {"point q = Ps; setxcomp(P, 5); r = xcomp(Ps) + xcomp(q);", {5, 5.5, 6, 5, 5.5, 6}},
        {"void move() { extern point P; P *= 2; } --- point q() { extern point Ps; move();"
         " return Ps; } r = xcomp(Ps) + 10 * xcomp(q());",
         {0, 10.5, 21, 0, 10.5, 21}},
        {"P = 2 * Ps; Ps = Ps + 1; r = xcomp(P);", {1, 2, 3, 1, 2, 3}},
        {"P *= 2; illuminance (Ps) { r = xcomp(Ps); }", {0, 1, 2, 0, 1, 2}},
    };
    ExpectAllRun(cases);
}

TEST(Language, LeavesLoopsAtEachPointSeparately)
{
    static const RunCase cases[] = {
        {"uniform float i; for (i = 0; i < 3; i += 1) r += u;", {0, 1.5, 3, 0, 1.5, 3}},
        {"float i = 0; while (i < 4 * u) { i += 1; r += 10; }", {0, 20, 40, 0, 20, 40}},
        {"float i; for (i = 0; i < 4; i += 1) { if (i > 3 * u) break; r += 1; }",
         {1, 2, 4, 1, 2, 4}},
        {"float i; for (i = 0; i < 4; i += 1) { if (u > 0.25) continue; r += 1; }",
         {4, 0, 0, 4, 0, 0}},
        {"float i, j; for (i = 0; i < 3; i += 1) for (j = 0; j < 3; j += 1) {"
         " if (i + j > 4 * u) break 2; r += 1; }",
         {1, 5, 9, 1, 5, 9}},
        {"float i, j; for (i = 0; i < 3; i += 1) { for (j = 0; j < 3; j += 1) {"
         " if (j > 2 * u) continue 2; r += 1; } r += 100; }",
         {3, 6, 309, 3, 6, 309}},
        {"uniform float i; for (i = 0; i < 5; i += 1) { if (u > 0.25) break; r += 1; }",
         {5, 0, 0, 5, 0, 0}},
        {"float i = 0; while (i < 3) { i += 1; if (u > 0.75) { if (v > 0.5) break; } r += 1; }",
         {3, 3, 3, 3, 3, 0}},
    };
    ExpectAllRun(cases);
}

TEST(Language, AccessesArrayElements)
{
    static const RunCase cases[] = {
        {"uniform float a[3] = {1, 2, 4}; r = a[0] + 10 * a[2];", {41, 41, 41, 41, 41, 41}},
        {"varying float a[2]; a[0] = u; a[1] = v; r = a[0] + 10 * a[1];",
         {0, 0.5, 1, 10, 10.5, 11}},
        {"uniform float a[3] = {1, 2, 4}; r = a[2 * u];", {1, 2, 4, 1, 2, 4}},
        {"varying float a[3] = {0, 0, 0}; a[2 * u] = 5; a[2 * u] += 1; r = a[1];",
         {0, 6, 0, 0, 6, 0}},
        {"uniform float a[2] = {1, 2}; uniform float i;"
         "for (i = 0; i < 2; i += 1) { a[i] *= 3; r += a[i] * u; }",
         {0, 4.5, 9, 0, 4.5, 9}},
    };
    ExpectAllRun(cases);
}

TEST(Language, ExpandsFunctions)
{
    static const RunCase cases[] = {
        {"float twice(float x) { return 2 * x; } --- r = twice(u) + twice(v);", {0, 1, 2, 2, 3, 4}},
        {"void fill(output float x; float y) { x = y + 1; } --- float a = 0; fill(a, u); r = a;",
         {1, 1.5, 2, 1, 1.5, 2}},
        {"float f(float x) { float y = x * 2; y += 1; return y * y; } --- r = u * v + f(u);",
         {1, 4, 9, 1, 4.5, 10}},
        {"float pick(float x; output float y) { if (x > 0.25) return 5; y = 1; } ---"
         "float y = 0; r = pick(u, y); r += 10 * y;",
         {10, 5, 5, 10, 5, 5}},
        {"float g(float x) { return x + 1; } float f(float x) { return g(g(x)); } ---"
         "if (v > 0.5) r = f(u);",
         {0, 0, 0, 2, 2.5, 3}},
        {"float sum(float a[]) { return a[0] + a[1]; } --- uniform float a[2] = {1, 2};"
         "r = sum(a) + u;",
         {3, 3.5, 4, 3, 3.5, 4}},
        {"float[2.0] g(float a[]) { return a; } float f(float a[], b[2]) { return a[1] + b[0]; } "
         "---"
         "varying float a[2] = {u, v}; float[] b = g(a); r = f(b, a);",
         {0, 0.5, 1, 1, 1.5, 2}},
        {"float[2.0] none() { } float[] part(float a[]) { if (a[0] > 0.25) return a; } ---"
         "varying float a[2] = {u, v}; float[2.0] b = none(); float[2.0] c = part(a);"
         "r = b[0] + c[0] + 10 * c[1];",
         {0, 0.5, 1, 0, 10.5, 11}},
        {"float[2.0] none() { } float sum(float a[]) { return a[0] + a[1]; }"
         "float[2.0] early(float x) { float q[2] = {3, 4}; if (x > 0.25) return q; } ---"
         "float[] w = early(v); r = sum(early(u)) + 10 * sum(none()) + 100 * w[1];",
         {0, 7, 7, 400, 407, 407}},
        {"float f(float a[]) { return 1; } float f(float a[3]) { return 2; }"
         "float g(float a[]) { return f(a); } ---"
         "uniform float a[2] = {0, 0}; uniform float b[3] = {0, 0, 0};"
         "r = f(a) + 10 * f(b) + 100 * g(a);",
         {121, 121, 121, 121, 121, 121}},
        {"--- float k = 2; float f(float x) { extern float k; k += x; return k; }"
         "r = f(u); r += k;",
         {4, 5, 6, 4, 5, 6}},
    };
    ExpectAllRun(cases);
}

TEST(Language, ComputesDefaultValues)
{
    static const RunCase cases[] = {
        {"float fact(uniform float n) { uniform float i, f = 1; for (i = 2; i <= n; i += 1) f *= i;"
         " return f; } light test(float k = fact(4); output varying float r = 0;) { r = k; }",
         {24, 24, 24, 24, 24, 24}},
        {"float f(uniform float n) { uniform float i = 0, f = 0; while (i < 9 && f < 99) { i += 1;"
         " if (i == 2) continue; if (i > n) { f += 0.5; break; } f += i; } return f; }"
         "light test(float k = f(4); output varying float r = 0;) { r = k; }",
         {8.5, 8.5, 8.5, 8.5, 8.5, 8.5}},
        {"float f(uniform float n) { uniform float i, j, f = 0; for (i = 0; i < 3; i += 1) {"
         " for (j = 0; j < 3; j += 1) { if (j == 1) continue 2; if (i == n) break 2; f += 1; }"
         " f += 100; } return f; }"
         "light test(float k = f(2); output varying float r = 0;) { r = k; }",
         {2, 2, 2, 2, 2, 2}},
        {"float one(uniform float x) { if (x > 0) return 1; }"
         "string name(uniform float x) { uniform float y = x; while (y > 5) y -= 1;"
         " if (y > 4.5) return \"big\"; }"
         "light test(float k = one(2) + 10 * one(-3); string a = name(9);"
         " string b = name(3); output varying float r = 0;)"
         "{ r = k; if (a == \"big\" && b == \"\") r += 1; }",
         {2, 2, 2, 2, 2, 2}},
        {"surface test(varying vector k = faceforward(vector (0, 0, 2), vector (0, 0, 1));"
         " varying float d = Du(v) + 1; output varying float r = 0;)"
         "{ r = abs(zcomp(k)) + d; }",
         {3, 3, 3, 3, 3, 3}},
        // These conditions vary; u is 0, 0.5 and 1 in each of the two rows.
        {"surface test(varying float a = u < 0.5 && v < 0.5 ? 4 : u; varying float b = a > 3 ? 1 : "
         "a;"
         " output varying float r = 0;) { r = a + 10 * b; }",
         {14, 5.5, 11, 0, 5.5, 11}},
        {"float f(float x) { float y = 2; if (x > 0.2) y = x; return y; }"
         "surface test(varying color a = u < 0.5 ? color (1, 2, 3) : color (u, u, 4);"
         " varying float b[2] = {f(u), v > 0.5 ? 3 : u * 2 + 1}; output varying float r = 0;)"
         "{ r = comp(a, 1) + comp(a, 2) + 10 * b[0] + 100 * b[1]; }",
         {125, 209.5, 315, 325, 309.5, 315}},
    };
    ExpectAllRun(cases);
}

// The function keeps its result in a varying local, although its call is uniform.
TEST(Language, UpdatesUniformVariablesOnceForAllPoints)
{
    const std::string f = "float f(float x) { float y = x + 1; return y; }";
    const std::string color = "color f(float x) { color y = color(x, 2, 3); return y; }";
    const RunCase cases[] = {
        {f + "--- uniform float k = 10; k += f(3); r = k;", {14, 14, 14, 14, 14, 14}},
        {f + "--- uniform float k = 10; k = f(k); k = f(k); r = k;", {12, 12, 12, 12, 12, 12}},
        {f + "--- uniform float i = 0; while (i < 6) { i = f(i); r += u; } r += i;",
         {6, 9, 12, 6, 9, 12}},
        {f + "--- uniform float i, k = 0; for (i = 0; i < 4; i += f(0)) { k += f(i); r += u * k; }"
             "r += k;",
         {10, 20, 30, 10, 20, 30}},
        {f + "--- uniform float A[2] = {1, 2}; A[1] += f(1); A[0] = f(A[1]); r = A[0] + A[1] / 10;",
         {5.4F, 5.4F, 5.4F, 5.4F, 5.4F, 5.4F}},
        {f + "--- uniform float A[2] = {1, 2}; A[f(0)] += 1; A[f(0)] *= f(1) + A[f(0)]; r = A[1];",
         {15, 15, 15, 15, 15, 15}},
        {f + "--- uniform float A[2] = {1, 2}; if (u > 0.25) { A[f(0)] += f(1); r = A[1]; }",
         {0, 4, 4, 0, 4, 4}},
        {f + "--- uniform float A[2] = {1, 2}; r = (A[f(0)] += f(1)) + A[1];", {8, 8, 8, 8, 8, 8}},
        {color +
             "--- uniform color A[2] = {1, 2}; A[1] += f(1); r = comp(A[1], 0) + comp(A[1], 2);",
         {8, 8, 8, 8, 8, 8}},
        {"string f(string s) { string y = concat(s, \"b\"); return y; } --- uniform string s = "
         "\"a\";"
         "s = concat(s, f(s)); s = concat(s, f(\"c\")); r = s == \"aabcb\" ? 1 : 0;",
         {1, 1, 1, 1, 1, 1}},
        {f + "float g(uniform float x) { uniform float A[2] = {0, 0}; A[x] += 2; A[f(x) - 1] *= 3;"
             "return A[1]; } float h(float x) { float y = f(x); return g(y); } ---"
             "uniform float k = h(0); k += g(f(0)); r = k;",
         {12, 12, 12, 12, 12, 12}},
        {"float f(float a) { return random() * a; } --- uniform float k = f(2), l = f(2);"
         "r = abs(Du(k + l)) + (k > l ? 0 : 1) * (k < l ? 0 : 1);",
         {0, 0, 0, 0, 0, 0}},
    };
    ExpectAllRun(cases);
}

TEST(Language, DifferentiatesOverTheGrid)
{
    static const RunCase cases[] = {
        {"float x = 3 * u + v; r = Du(x);", {3, 3, 3, 3, 3, 3}},
        {"float x = 3 * u + 2 * v; r = Dv(x);", {2, 2, 2, 2, 2, 2}},
        {"float x = u * u; x = Du(x); r = x;", {0, 1, 2, 0, 1, 2}},
        {"float x = u; r = Deriv(x * 4, x);", {4, 4, 4, 4, 4, 4}},
        {"r = area(point(u, v, 0));", {0.125, 0.25, 0.125, 0.125, 0.25, 0.125}},
        {"r = ycomp(calculatenormal(point(u, 0, -v)));", {1, 1, 1, 1, 1, 1}},
    };
    ExpectAllRun(cases);
}

TEST(Language, InterpolatesSplines)
{
    static const RunCase cases[] = {
        {"r = spline(u, 0, 0, 1, 2, 2);", {0, 1, 2, 0, 1, 2}},
        {"uniform float k[5] = {0, 0, 1, 2, 2}; r = spline(u, k);", {0, 1, 2, 0, 1, 2}},
        {"r = spline(\"linear\", u, 9, 1, 3, 5, 9);", {1, 3, 5, 1, 3, 5}},
        {"color c = spline(u, color 0, color 0, color(2, 0, 0), color 4, color 4);"
         "r = comp(c, 0);",
         {0, 2, 4, 0, 2, 4}},
    };
    ExpectAllRun(cases);
}
