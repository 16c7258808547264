// Checks that one fault gives one report, at its place, and that its consequences give none.

#include <gtest/gtest.h>

#include "helpers/CheckedShader.h"
#include "semantics/TypedStatement.h"

namespace {

struct Case {
    const char* source;
    const char* reports;
};

template <std::size_t Count>
void ExpectReports(const Case (&cases)[Count])
{
    for (const Case& c : cases)
        EXPECT_EQ(CheckedShader(c.source).Reports(), c.reports) << c.source;
}

TEST(OneReport, StaysQuietAfterAnUndefinedName)
{
    for (const char* statement : {
             "f1 = noise(q);",
             "p1 = transform(q, p1);",
             "p1 = transform(\"world\", q, p1);",
             "f1 = distance(transform(q, p1), -(1, 2, 3));",
             "c1 = 2 * mix(q, noise(f1), noise(p1));",
             "c1 = f1 < 1 ? noise(q) : noise(p1);",
             "c1 = texture(\"a\", q, f1);",
             "c1 = texture(\"a\", f1, q);",
             "c1 = texture(\"a\", q);",
             "c1 = texture(\"a\", f1, f1, q);",
             "c1 = texture(\"a\", f1, f1, q, 1, \"blur\", 1);",
             "c1 = texture(q, f1, f1);",
             "f1 = environment(\"a\", p1, q, 1, q, 1);",
             "f1 = shadow(\"a\", p1, \"source\", p1, q);",
             "f1 = filterstep(1, f2, q);",
             "float new = q;",
             "float[] new = q;",
             "float q = q + 1;",
             "f1 = q + q * 2;",
             "q = 1; q = \"a\";",
             "f1 = q[2];",
             "q[2] = 1;",
             "fa[q] = 1;",
             "f1 = sqrt(q) + cos(q);",
             "printf(\"%f\", q);",
             "if (q < 1 && q == 2) f1 = 1;",
             "c1 = (q, 1, 2);",
             "c1 = color q;",
             "c1 = texture(q, q, 1, \"blur\", q);",
             "illuminance(q) {}",
         })
        EXPECT_EQ(TypedStatement(statement).Reports(), "ERROR: Undefined variable: q") << statement;
}

TEST(OneReport, StaysQuietAfterAnOperatorWithoutAType)
{
    for (const char* statement : {
             "f1 = c1 + p1;",
             "float new = c1 + p1;",
             "float new[2] = {1, c1 + p1};",
             "f1 = fa[c1 + p1];",
             "p1 = (c1 + p1, 1, 2);",
             "m1 = (1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, c1 + p1);",
             "if (c1 + p1 < 1) f1 = 1;",
             "if (1 == c1 + p1) f1 = 1;",
             "f1 = sqrt(c1 + p1);",
             "c1 = mix(c1, c2, c1 + p1);",
             "c1 = spline(f1, c1, c1, c1 + p1, c1, c1);",
             "printf(\"%f\", c1 + p1);",
             "c1 = texture(\"a\", c1 + p1, f1);",
             "c1 = texture(\"a\", f1, f1, \"blur\", c1 + p1);",
             "c1 = environment(\"a\", c1 + p1);",
             "illuminance(m1 + m2) {}",
         })
        EXPECT_EQ(TypedStatement(statement).Reports(), "ERROR: Incompatible types for +")
            << statement;
    EXPECT_EQ(
        CheckedShader("float f(color c; point p) { return c + p; }\nsurface s() {}").Reports(),
        "1: ERROR: Incompatible types for +");
}

TEST(OneReport, ReportsTheLeftOperandIfBothAreWrong)
{
    static const Case cases[] = {
        {"s1 = s1 + s2;", "ERROR: Invalid type for left expression of a +"},
        {"f1 = 2 * (fa - fa);", "ERROR: Invalid type for left expression of a -"},
        {"v1 = c1 ^ c2;", "ERROR: Invalid type for left expression of a cross product"},
        {"f1 = 1 . 2;", "ERROR: Invalid type for left expression of dot product"},
        {"f1 = (1, 2, 3) . (4, 5, 6) + 1;",
         "ERROR: Ambiguous type for left expression of dot product"},
        {"if (s1 < s2) f1 = 1;", "ERROR: Invalid type for left expression of '<'."},
        {"if (fa != fa) f1 = 1;", "ERROR: Invalid type for left expression of !="},
        {"if ((1, 2, 3) == (1, 2, 3)) f1 = 1;", "ERROR: Ambiguous type for left expression of =="},
        {"for (s1 + s2; f1 < 1; f1 += 1) c1 = 1;",
         "ERROR: Invalid type for left expression of a +"},
        {"c1 = texture(\"a\", p1, p2);", "ERROR: Texture coordinate must be a float"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TypedStatement(c.source).Reports(), c.reports) << c.source;
}

TEST(OneReport, ReportsOnlyArgumentsThatPromotionDoesNotFit)
{
    static const Case cases[] = {
        {"f1 = clamp(f1, 0, \"half\");",
         "ERROR: Invalid type for argument 3 of 'clamp' function (color expected)"},
        {"c1 = mix(c1, 0, \"half\");",
         "ERROR: Invalid type for argument 3 of 'mix' function (float expected)"},
        {"p1 = mix(p1, c1, 0.5);",
         "ERROR: Invalid type for argument 2 of 'mix' function (point expected)"},
        {"f1 = lit(\"a\", 1);",
         "ERROR: Invalid type for argument 1 of 'lit' function (float expected)"},
        {"c1 = spline(f1, c1, 1, c1, c1, s1);",
         "ERROR: Invalid type for argument 6 of 'spline' function "},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TypedStatement(c.source, "surface", "float lit(float a; color c) { return a; }")
                      .Reports(),
                  c.reports)
            << c.source;
}

TEST(OneReport, StaysQuietAfterARefusedCall)
{
    const std::string refused = "2: ERROR: Detail mismatch for argument 0 of function 'f'";
    for (const char* statement :
         {"uniform float x = f(u);", "uniform float x; x = 2 * f(u) + 1;", "Ci = f(f(u));"})
        EXPECT_EQ(CheckedShader("float f(uniform float x) { return x; }\nsurface a() { " +
                                std::string(statement) + " }")
                      .Reports(),
                  refused)
            << statement;
    static const Case cases[] = {
        {"void f(output float x) { x = 1; }\nsurface a(float k = 1) { f(k); }",
         "2: ERROR: Read-only formal passed as argument 0 to the function 'f' cannot be used as an "
         "output parameter of this function."},
        {"float f() { float c = 0; illuminance(P) { c += 1; } return c; }\n"
         "displacement a() { uniform float x = f(); }",
         "2: ERROR: Cannot call a function containing a 'illuminance' statement from this type of "
         "shader: f"},
    };
    ExpectReports(cases);
}

TEST(OneReport, ReportsNoDetailOfRefusedCode)
{
    static const struct {
        const char* statement;
        const char* report;
    } cases[] = {
        {"k = Cs;", "Cannot assign to a formal not declared 'output': k"},
        {"k = u;", "Cannot assign to a formal not declared 'output': k"},
        {"k += Cs;", "Cannot assign to a formal not declared 'output': k"},
        {"Cs[1] = u;", "Variable not an array type: Cs"},
        {"x = Cs;", "Type mismatch for assignment: x"},
        {"x = q[\"s\"];", "Index of array reference must be a float"},
        {"q[\"s\"] = u;", "Index of array reference must be a float"},
        {"x = Cs[1] + u;", "Variable is not an array: Cs"},
        {"x = nosuch * u;", "Undefined variable: nosuch"},
        {"x = sin(Cs) + u;", "Invalid type for argument 1 of 'sin' function (float expected)"},
        {"uniform float y = sin(Cs) + u;",
         "Invalid type for argument 1 of 'sin' function (float expected)"},
        {"uniform float y = nosuch + u;", "Undefined variable: nosuch"},
        {"uniform float y = nosuch(u) + u;", "Undefined function: nosuch"},
        {"uniform color y = (N, 0, u);", "Invalid type for coordinate 0 of a point"},
        {"uniform float y[2] = {u, Cs};",
         "Type mismatch for expression 2 inside array initializer"},
        {"uniform color y = color(N . Cs + u);", "Incompatible types for a dot product"},
        {"uniform float y = q[\"s\"] + u;", "Index of array reference must be a float"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(
            CheckedShader("surface a(float k = 1) { uniform float x = 0; float q[2] = {1, 2}; " +
                          std::string(c.statement) + " }")
                .Reports(),
            "1: ERROR: " + std::string(c.report))
            << c.statement;
}

TEST(OneReport, StaysQuietAfterARepeatedName)
{
    static const Case cases[] = {
        {"surface a() { float x = 1; color x = Cs; x = Cs; Ci = x; }",
         "1: ERROR: Illegal redefinition of variable: x"},
        {"surface a() { uniform float x = 1; float x = u; x = v; Ci = x; }",
         "1: ERROR: Illegal redefinition of variable: x"},
        {"surface a() { float f(float q) { return q; } float f = 2; Ci = sqrt(f) + f(1); }",
         "1: ERROR: Illegal redefinition of variable: f"},
        {"surface a() { extern point P; extern float P; Ci = P; }",
         "1: ERROR: Illegal redefinition of variable: P"},
        // after a second declaration with the same type and detail, the first remains in effect
        {"surface a() { float x = 1; float x = 2; x = Cs; }",
         "1: ERROR: Illegal redefinition of variable: x\n"
         "1: ERROR: Type mismatch for assignment: x"},
    };
    ExpectReports(cases);
}

TEST(OneReport, ReportsArraysWithoutALength)
{
    static const Case cases[] = {
        {"float[] g(float a[]) { return a; }\nsurface s() { float q[2];\nfloat[] w = g(q); }",
         "3: ERROR: The length of the result that initializes array variable 'w' is unknown"},
        {"surface s() { float[] w = 1; }", "1: ERROR: Variable initialization type mismatch"},
    };
    ExpectReports(cases);
}

}  // namespace
