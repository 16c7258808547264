#include "semantics/SlcCalculateTypesSets.h"

#include <gtest/gtest.h>

#include "semantics/TypedStatement.h"

TEST(SlcCalculateTypesSets, FindsEveryTypeThatAnExpressionMayHave)
{
    struct Case {
        const char* expression;
        const char* types;
    };
    static const Case cases[] = {
        // constants, variables, casts, assignments and texture accesses
        {"1", "float"},
        {"\"a\"", "string"},
        {"(1, 2, 3)", "point color"},
        {"n1", "normal"},
        {"fa", "float[3]"},
        {"ca[1]", "color"},
        {"PI", "float"},
        {"vector (1, 2, 3)", "vector"},
        {"(c1 = 1)", "color"},
        {"texture(\"a\")", "float color"},
        {"shadow(\"a\", p1)", "float color"},
        // sums and differences
        {"f1 + f2", "float"},
        {"c1 + f1", "color"},
        {"f1 - c1", "color"},
        {"c1 + p1", ""},
        {"p1 - p2", "vector"},
        {"p1 + p2", "point"},
        {"p1 + v1", "point"},
        {"n1 - p1", "point"},
        {"v1 + n1", "vector"},
        {"n1 + n2", "normal"},
        {"p1 - f1", "vector"},  // the float counts as a point
        {"f1 + n1", "normal"},
        {"m1 + m2", ""},
        {"m1 - f1", ""},
        {"s1 + s2", ""},
        {"fa + 1", ""},
        // products
        {"p1 * p2", "point"},
        {"p1 * v1", "vector"},
        {"f1 * v1", "vector"},
        {"f1 * p1", "point"},
        {"n1 * n2", "normal"},
        {"n1 / f1", "normal"},
        {"c1 * c2", "color"},
        {"m1 * m2", "matrix"},
        {"f1 / m1", "matrix"},
        {"m1 * p1", ""},
        {"2 * (1, 2, 3)", "color point"},
        {"c1 * (1, 2, 3)", "color"},
        {"v1 * (1, 2, 3)", "vector"},
        {"(1, 2, 3) / (1, 2, 3)", "color point"},
        // dot and cross products
        {"v1 . n1", "float"},
        {"c1 . c2", "float"},
        {"1 . 2", ""},
        {"f1 . v1", ""},
        {"c1 . v1", ""},
        {"v1 ^ n1", "point"},
        {"f1 ^ v1", ""},
        // signs, and choices by `?:`
        {"-f1", "float"},
        {"-(1, 2, 3)", "color point"},
        {"-n1", "normal"},
        {"-m1", ""},
        {"f1 < 1 ? f1 : c1", "color"},
        {"f1 < 1 ? c1 : f1", "color"},
        {"f1 < 1 ? f1 : f2", "float"},
        {"f1 < 1 ? (1, 2, 3) : (3, 2, 1)", "point color"},
        {"f1 < 1 ? v1 : p1", "point"},  // the kind of the second value
        {"f1 < 1 ? s1 : s2", "string"},
        {"f1 < 1 ? s1 : f1", ""},
        {"f1 < 1 ? fa : fa", ""},  // arrays cannot be operands of a choice
        // calls
        {"sqrt(f1)", "float"},
        {"noise(p1)", "float color point"},
        {"random()", "float color point"},
        {"mix(f1, c1, 0.5)", "color"},  // by promotion
        {"mix(f1, f2, 0.5)", "float"},
        {"normalize(v1)", "vector"},
        {"noise(p1) * c1", "color"},
        {"spline(f1, c1, c1, c1, c1, c1)", "color"},
        {"trace(p1, v1)", "float color"},
        // expressions that are reported, or contain one that is
        {"nothing", "error"},
        {"nothing + 1", "error"},
        {"-nothing", "error"},
        {"v1 . nothing", "error"},
        {"sqrt(nothing)", "error"},
        {"f1 < 1 ? nothing : 1", "error"},
        {"nothing()", "error"},
        {"(s1 += s2)", "void"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TypedStatement(std::string("f1 = ") + c.expression + ";").ValueTypes(), c.types)
            << c.expression;
}

TEST(SlcCalculateTypesSets, ReportsWrongUsesOfNames)
{
    EXPECT_EQ(TypedStatement("f1 = f2[1];").Reports(), "ERROR: Variable is not an array: f2");
    EXPECT_EQ(TypedStatement("f1[1] = 1;").Reports(), "ERROR: Variable not an array type: f1");
    EXPECT_EQ(TypedStatement("f1 = nothing(1);").Reports(), "ERROR: Undefined function: nothing");
}

TEST(SlcCalculateTypesSets, ChecksAssignments)
{
    struct Case {
        const char* statement;
        const char* reports;
    };
    static const Case cases[] = {
        {"f1 += 1; c1 *= 2; v1 -= v2; n1 /= 2; p1 += v1;", ""},
        {"m1 = m2; s1 = s2;", ""},
        {"m1 *= m2;", "ERROR: A lvalue of type 'matrix' cannot be assigned with the '*=' operator"},
        {"s1 += s2;", "ERROR: A lvalue of type 'string' cannot be assigned with the '+=' operator"},
        {"fa = fa;", "ERROR: A lvalue of type 'float[3]' cannot be assigned with the '=' operator"},
        {"Ng = 1;", "WARNING: Assignment to a read-only variable: Ng"},
        {"P = P; N = N; Ci = 1; Oi = Os;", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TypedStatement(c.statement).Reports(), c.reports) << c.statement;

    const CheckedShader formals(
        "surface test(float Kd = 1; output float out = 0; float Kt[2] = {1, 2})\n"
        "{ out = Kd;\n Kd = 2;\n Kt[1] = 0;\n"
        "void f() { extern uniform float Kd;\n Kd = 1; } }");
    EXPECT_EQ(formals.Reports(), "3: ERROR: Cannot assign to a formal not declared 'output': Kd\n"
                                 "4: ERROR: Cannot assign to a formal not declared 'output': Kt\n"
                                 "6: ERROR: Cannot assign to a formal not declared 'output': Kd");
}

TEST(SlcCalculateTypesSets, ChecksCalls)
{
    const char* const functions = "void draw(float x) {}\n"
                                  "float area2(color c; string s) { return 1; }\n";
    struct Case {
        const char* statement;
        const char* reports;
    };
    static const Case cases[] = {
        {"f1 = sqrt();", "ERROR: Invalid number of arguments for 'sqrt' function"},
        {"f1 = sqrt(1, 2);", "ERROR: Invalid number of arguments for 'sqrt' function"},
        {"f1 = sqrt(s1);",
         "ERROR: Invalid type for argument 1 of 'sqrt' function (float expected)"},
        {"f1 = area2(p1, 1);",
         "ERROR: Invalid type for argument 1 of 'area2' function (color expected); "
         "ERROR: Invalid type for argument 2 of 'area2' function (string expected)"},
        {"printf(\"%f\", draw(1));", "ERROR: Void calls may not be used as parameters"},
        {"f1 = sqrt(draw(1));",
         "ERROR: Invalid type for argument 1 of 'sqrt' function (float expected)"},
        {"f1 = draw(1);", "ERROR: Type mismatch for assignment: f1"},
        {"draw(f1); draw(sqrt(2));", ""},
        {"f1 = occlusion(p1, v1, 16, \"maxdist\", 1, \"bias\", 0.1);", ""},
        {"f1 = occlusion(p1, v1, \"bias\");",
         "ERROR: Argument missing for a name-value pair in occlusion(...)"},
        {"f1 = occlusion(p1, v1, 16, \"size\", 1);",
         "ERROR: Invalid type for argument 4 of 'occlusion' function "},
        {"f1 = attribute(\"user:f\", f2) + textureinfo(\"a\", \"b\", fa);", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TypedStatement(c.statement, "surface", functions).Reports(), c.reports)
            << c.statement;
}

TEST(SlcCalculateTypesSets, PrefersFunctionsWithAValueWhereItIsUsed)
{
    const char* const functions = "void f(float x) {}\n"
                                  "float f(color x) { return 1; }\n"
                                  "void f(color x) {}\n";
    EXPECT_EQ(TypedStatement("f1 = 2 * f(c1);", "surface", functions).Reports(), "");
    EXPECT_EQ(TypedStatement("f1 = 2 * f(f1);", "surface", functions).ValueText(),
              "(#:float * f(f1:color):float):float");
}
