// Checks the advice that follows errors of the semantic passes.

#include <gtest/gtest.h>
#include <string>

#include "helpers/CheckedShader.h"

namespace {

struct Case {
    const char* source;  // a statement, or a whole text
    const char* reports;
};

void ExpectReports(const std::string& source, const char* reports)
{
    EXPECT_EQ(CheckedShader(source, {}, 2).Reports(), reports) << source;
}

TEST(Advice, NamesTheFormOfThisLanguage)
{
    static const Case cases[] = {
        {"c = bake3d(\"a\", p1);",
         "1: ERROR: Undefined function: bake3d\n"
         "1: ADVICE: 'bake3d' belongs to a later revision of the language"},
        {"x = c1[2];", "1: ERROR: Variable is not an array: c1\n1: ADVICE: write 'comp(c1, 2)'"},
        {"x = m1[f1];",
         "1: ERROR: Variable is not an array: m1\n1: ADVICE: write 'comp(m1, row, column)'"},
        {"x = p1[2];",
         "1: ERROR: Variable is not an array: p1\n1: ADVICE: write 'xcomp(p1)', or 'y' or 'z'"},
        {"c[f1] = 2;",
         "1: ERROR: Variable not an array type: c\n1: ADVICE: write 'setcomp(c, ..., ...)'"},
        {"x = noise(noise(p1));", "1: ERROR: Ambiguous type for argument 1 of 'noise'\n"
                                  "1: ADVICE: write 'float noise(...)' or 'point noise(...)'"},
    };
    for (const Case& c : cases)
        ExpectReports("surface a(float f1 = 1; color c1 = 1; point p1 = 1; matrix m1 = 1) { "
                      "float x; color c = 1; " +
                          std::string(c.source) + " }",
                      c.reports);
}

TEST(Advice, NamesTheDetailToDeclare)
{
    static const Case cases[] = {
        {"void f(output float y) { y = 1; }\nsurface a() { uniform float x; f(x); }",
         "2: ERROR: Detail mismatch for argument 0 of function 'f'\n"
         "2: ADVICE: the variable is uniform: declare it 'varying', or formal 'y' 'output "
         "uniform'"},
        {"void f(uniform float y) { }\nsurface a() { f(u); }",
         "2: ERROR: Detail mismatch for argument 0 of function 'f'\n"
         "2: ADVICE: formal 'y' is uniform, and this argument differs from point to point"},
        {"float f(float x) { float y; y = x; return y; }\nsurface a() { uniform float b = f(2); }",
         "2: ERROR: The expression initializing 'b' must be uniform\n"
         "2: ADVICE: the value comes from locals without a declared detail: declare them "
         "'uniform', and in functions also the formals that go into them"},
        {"surface a() { float x = 1; uniform float y = x; }",
         "1: ERROR: The expression initializing 'y' must be uniform\n"
         "1: ADVICE: the value comes from locals without a declared detail: declare them "
         "'uniform', and in functions also the formals that go into them"},
        {"float f(float x) { uniform float y; y = x; return y; }\nsurface a() { }",
         "1: ERROR: Assignment detail mismatch: y\n"
         "1: ADVICE: the value is as varying as the arguments of the call: declare the formals "
         "that it comes from 'uniform'"},
        {"float f(uniform float x) { uniform float y = x; y += 1; return y; }\n"
         "surface a() { uniform float b = f(2); }",
         ""},
    };
    for (const Case& c : cases)
        ExpectReports(c.source, c.reports);
}

}  // namespace
