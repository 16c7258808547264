// Checks the warnings of level 2 about constant arguments that do not fit their function, and about
// code with other effects than its text suggests.

#include <gtest/gtest.h>
#include <string>

#include "helpers/CheckedShader.h"

namespace {

struct Case {
    const char* statement;
    const char* report;  // without "1: WARNING: " in the test of numbers and formats
};

constexpr const char* k_filters = "'catmull-rom', 'box', 'triangle', 'gaussian'";
constexpr const char* k_bases = "'catmull-rom', 'bezier', 'bspline', 'hermite', 'power', 'linear'";
constexpr const char* k_spaces = "'rgb', 'hsv', 'hsl', 'xyz', 'XYZ', 'xyY', 'YIQ'";

std::string ReportsOf(const std::string& statement)
{
    return CheckedShader("surface s() { " + statement + " }", {}, 2).Reports();
}

TEST(SlcConstantArguments, WarnOfUnknownNames)
{
    const std::string filter =
        "1: WARNING: Unknown filter 'gausian' counts as 'catmull-rom', known are ";
    const std::string basis =
        "1: WARNING: Unknown spline basis 'catmul-rom' counts as 'catmull-rom', known are ";
    const std::string space = "1: WARNING: Unknown color space '";
    EXPECT_EQ(ReportsOf("Ci = filterstep(0, u, v, \"width\", 2, \"filter\", \"gausian\");"),
              filter + k_filters);
    EXPECT_EQ(ReportsOf("Ci = filterstep(0, u, \"filter\", \"gausian\");"), filter + k_filters);
    EXPECT_EQ(ReportsOf("Ci = spline(\"catmul-rom\", u, 1, 2, 3, 4);"), basis + k_bases);
    EXPECT_EQ(ReportsOf("Ci = ctransform(\"HSV\", Cs);"),
              space + "HSV' counts as 'rgb', known are " + k_spaces);
    EXPECT_EQ(ReportsOf("Ci = ctransform(\"lab\", \"hsv\", Cs);"),
              space + "lab' counts as 'rgb', known are " + k_spaces);
    EXPECT_EQ(ReportsOf("Ci = color \"Hsv\" (u, 1, 1);"),
              space + "Hsv' counts as 'rgb', known are " + k_spaces);
    for (const char* known :
         {"Ci = filterstep(0, u, \"filter\", \"box\");", "Ci = spline(\"bspline\", u, 1, 2, 3, 4);",
          "Ci = ctransform(\"xyY\", \"YIQ\", Cs);",
          "Ci = color (1, 2, 3) + color \"hsl\" (1, 2, u);",
          "string name = \"lab\"; Ci = ctransform(name, Cs);"})
        EXPECT_EQ(ReportsOf(known), "") << known;
}

TEST(SlcConstantArguments, WarnOfNumbersAndFormatsThatDoNotFit)
{
    static const Case cases[] = {
        {"Ci = comp(Cs, 3);", "An index outside of 0 to 2 counts as the nearest one of them"},
        {"Ci = comp(P, -1);", "An index outside of 0 to 2 counts as the nearest one of them"},
        {"Ci = comp(Cs, 2.9);", ""},
        {"color c = 1; setcomp(c, 5, 1); Ci = c;",
         "An index outside of 0 to 2 counts as the nearest one of them"},
        {"matrix m = 1; Ci = comp(m, 3, 4);",
         "An index outside of 0 to 3 counts as the nearest one of them"},
        {"Ci = spline(\"bezier\", u, 1, 2, 3, 4, 5, 6);",
         "A 'bezier' spline leaves out the last 2 of 6 values, it takes 4 and 3 for each further "
         "segment"},
        {"Ci = spline(\"bezier\", u, 1, 2, 3, 4, 5, 6, 7) + spline(u, 1, 2, 3, 4, 5);", ""},
        {"float a[5] = {1, 2, 3, 4, 5}; Ci = spline(\"hermite\", u, a);",
         "A 'hermite' spline leaves out the last 1 of 5 values, it takes 4 and 2 for each further "
         "segment"},
        {"float a[3] = {1, 2, 3}; Ci = spline(u, a);",
         "A spline needs four values or more, of 3 it is the first"},
        {"printf(\"%f %s\\n\", u);", "Format with 2 specifiers has 1 arguments"},
        {"printf(\"done\\n\", u);", "Format with 0 specifiers has 1 arguments"},
        {"printf(\"100%% or 50 % of %f %\\n\", u);", ""},
        {"printf(\"%5.2f\\n\");",
         "Unknown specifier '%5.2f' stays as it is, known are '%' with one of 'fdpcms', and '%%'"},
        {"string x = format(\"%i\"); Ci = x == \"\" ? 1 : 0;",
         "Unknown specifier '%i' stays as it is, known are '%' with one of 'fdpcms', and '%%'"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ReportsOf(c.statement), *c.report ? std::string("1: WARNING: ") + c.report : "")
            << c.statement;
}

TEST(SlcConstantArguments, WarnOfUnexpectedEffects)
{
    static const Case cases[] = {
        {"surface s(output varying string name = \"\") {}",
         "1: WARNING: Parameter 'name' is uniform: a string has one value for all points"},
        {"surface s(output varying string name = \"\") { name = format(\"%f\", u); }",
         "1: WARNING: Parameter 'name' is uniform: a string has one value for all points\n"
         "1: ERROR: Assignment detail mismatch (should be varying): name\n"
         "1: ADVICE: a string parameter has one value for all points, also if it is declared "
         "'varying': use a local variable"},
        {"light l() { illuminate (P) Cl = 1; solar () Cl = 2; }",
         "1: WARNING: Only this light remains, not that of the 'illuminate' or 'solar' statement "
         "before it"},
        {"void lamp() { illuminate (P) Cl = 1; } light l() { lamp(); solar () Cl = 2; }",
         "1: WARNING: Only this light remains, not that of the 'illuminate' or 'solar' statement "
         "before it"},
        {"light l(float far = 0) { if (far > 0) solar () Cl = 2; else illuminate (P) Cl = 1; }",
         ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(CheckedShader(c.statement, {}, 2).Reports(), c.report) << c.statement;
}

}  // namespace
