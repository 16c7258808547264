// Checks the errors and warnings of the parser, and where it resumes after an error.

#include <gtest/gtest.h>

#include "frontend/SlcParseCode.h"
#include "helpers/ParsedSource.h"

namespace {

struct ReportCase {
    const char* source;
    const char* reports;
};

const char* const k_parseError = "1: ERROR: parse error\n";
const char* const k_parseErrorAndOn =
    "1: ERROR: parse error\n1: WARNING: Compilation resumes here\n";
const char* const k_noReturnType = "1: ERROR: Local function definition must have a return type\n";

std::string ReportsOfBody(const std::string& statements)
{
    return ParsedSource("surface s() { " + statements + " }").Reports();
}

}  // namespace

TEST(SlcParser, ReportsFaultsOfFormInItsOwnWords)
{
    static const ReportCase cases[] = {
        {"surface s(float x) {}", "1: ERROR: '=' expected\n"},
        {"surface s(float x[2]) {}", "1: ERROR: '=' expected\n"},
        {"surface s(float x[] = {}) {}", "1: ERROR: An array needs a valid initializer\n"},
        {"float f(float x = 1) {}", "1: ERROR: No default value allowed for function formal\n"},
        {"float f(float x[2] = {1, 2}) {}",
         "1: ERROR: No default value allowed for function formal\n"},
        {"f() {}", "1: WARNING: No return type defined for function f ('float' is assumed)\n"},
        {"varying float f() {}",
         "1: WARNING: Function detail is ignored for function f (will be determined by call "
         "context)\n"},
    };
    for (const ReportCase& c : cases)
        EXPECT_EQ(ParsedSource(c.source).Reports(), c.reports) << c.source;
}

TEST(SlcParser, ReportsFaultsOfStatementsInItsOwnWords)
{
    static const ReportCase cases[] = {
        {"x = 1 y = 2;", "1: ERROR: ';' expected at this point\n"},
        {"return 1", "1: ERROR: ';' expected\n"},
        {"break", "1: ERROR: ';' expected\n"},
        {"continue 2", "1: ERROR: ';' expected\n"},
        {"float x", "1: ERROR: ';' expected\n"},
        {"f() {}", k_noReturnType},
        {"f(float x) {}", k_noReturnType},
        {"f(float x;) {}", k_noReturnType},
        {"f(float x; color c) {}", k_noReturnType},
        {"f(float x; color c;) {}", k_noReturnType},
        {"x = float \"abc\" 1;", "1: ERROR: No spacename can be associated to a float\n"},
        {"x = string \"a\" y;", "1: ERROR: No spacename can be associated to a string\n"},
        {"x = texture(\"a\"[1][2]);",
         "1: ERROR: A identifier is expected for an array reference\n"},
        {"uniform float f() {}",
         "1: WARNING: Function detail is ignored for function f (will be determined by call "
         "context)\n"},
        {"illuminance(\"a\", P) ;",
         "1: WARNING: Light categories are not yet implemented, and thus, will be ignored by the "
         "'illuminance' statement.\n"},
        {"illuminance(\"a\", P, N, 1) ;",
         "1: WARNING: Light categories are not yet implemented, and thus, will be ignored by the "
         "'illuminance' statement.\n"},
        {"float[1e30] x;", "1: ERROR: Number is too large for an array size\n"},
    };
    for (const ReportCase& c : cases)
        EXPECT_EQ(ReportsOfBody(c.source), c.reports) << c.source;
}

TEST(SlcParser, RefusesFormsThatTheLanguageLacks)
{
    static const char* const bodies[] = {
        "if (x) y = 1;",  // a condition needs a comparison
        "x = (a < b);",   // a comparison is no value
        "x = a < b;",
        "x = !a;",
        "if a < b < c x = 1;",  // relations do not chain
        "return;",
        "for (;;) x = 1;",
        "for (float i = 0; i < 1; i = 1) x = 1;",
        "a + b;",  // an expression is no statement
        "texture(\"a\");",
        "x = (1, 2);",
        "x = float \"abc\";",  // the string is the name of a space
        "x = texture(a + b);",
        "x = texture(a[1][2][3]);",
        "x = {1, 2};",
        "float a[3] = 1;",
        "float a[n];",
        "float[3] x;",  // the length of an array type is a float
        "x = +1;",
        "x = \"a\" \"b\";",
        "output float f() {}",
        "float foo();",
    };
    for (const char* body : bodies)
        EXPECT_TRUE(ReportsOfBody(body).ends_with("1: WARNING: Compilation resumes here\n") &&
                    ReportsOfBody(body).find("1: ERROR: ") == 0)
            << body << "\n"
            << ReportsOfBody(body);

    static const char* const sources[] = {
        "surface a() {};",
        "float x;",
        "float foo();",
        "output float f() {}",
        "extern float f() {}",
        "surface a(extern float x = 1) {}",
        "surface a(float x = 1, float y = 2) {}",
        "surface a(x = 1) {}",
    };
    for (const char* source : sources)
        EXPECT_EQ(ParsedSource(source).Reports(), k_parseError) << source;

    static const char* const unfinished[] = {"", "surface a() { x = 1;", "surface a"};
    for (const char* source : unfinished)
        EXPECT_EQ(ParsedSource(source).Reports(), "2: ERROR: parse error\n") << source;
}

TEST(SlcParser, ReportsTheEndRightAfterAnInvalidCharacter)
{
    testing::internal::CaptureStderr();
    EXPECT_THROW(static_cast<void>(ParseCode(std::string_view("surface s() { $"), false)),
                 SlcCompilationError);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(NbErrors(), 2);
}

TEST(SlcParser, ReportsTheMissingSemicolonInPlaceOfASyntaxError)
{
    static const char* const bodies[] = {"x = a[1][2];", "x = f()[1];", "x = (y)[1];",
                                         "x = a ? 1 : 2;", "x = 1, y = 2;"};
    for (const char* body : bodies)
        EXPECT_EQ(ReportsOfBody(body), "1: ERROR: ';' expected at this point\n"
                                       "1: WARNING: Compilation resumes here\n")
            << body;
    EXPECT_EQ(ReportsOfBody("break x;"),
              std::string("1: ERROR: ';' expected\n") + k_parseErrorAndOn);
}

TEST(SlcParser, ResumesAfterTheNextSemicolonOrBrace)
{
    static const ReportCase cases[] = {
        // one error for each statement at fault
        {"surface s() {\nx = );\ny = );\nz = 1;\n}",
         "2: ERROR: parse error\n2: WARNING: Compilation resumes here\n"
         "3: ERROR: parse error\n3: WARNING: Compilation resumes here\n"},
        // a fault shortly after another gives no second error
        {"surface s() {\nx = ); );\ny = 1;\n}",
         "2: ERROR: parse error\n2: WARNING: Compilation resumes here\n"
         "2: WARNING: Compilation resumes here\n"},
        // the brace that ends the recovery does not end the block
        {"surface s() {\nf(1) }", "2: ERROR: parse error\n2: WARNING: Compilation resumes here\n"},
        {"surface s() {\n{ f(1) }\nx = 1; }",
         "2: ERROR: parse error\n2: WARNING: Compilation resumes here\n"
         "4: ERROR: parse error\n"},
        // outside a body there is no recovery
        {"surface s(float x = ) {\nx = );\n}", "1: ERROR: parse error\n"},
        {"surface s() {}\n)\nsurface t() { x = ); }", "2: ERROR: parse error\n"},
    };
    for (const ReportCase& c : cases)
        EXPECT_EQ(ParsedSource(c.source).Reports(), c.reports) << c.source;
}

TEST(SlcParser, ShowsTheLineAtFault)
{
    EXPECT_EQ(ParsedSource("surface s()\n{\n\tif (x) y = 1;\n}").Output(),
              "test.sl:3: ERROR: parse error:\n"
              "\n"
              "          \tif (x) y = 1;\n"
              "          \t       ^\n"
              "test.sl:3: WARNING: Compilation resumes here:\n"
              "\n"
              "          \tif (x) y = 1;\n"
              "          \t            ^\n");
}

TEST(SlcParser, CountsWarningsByTheLevel)
{
    EXPECT_NE(ParsedSource("f() {}").Root(), nullptr);
    EXPECT_EQ(NbWarnings(), 1);
    EXPECT_EQ(ParsedSource("f() {}", 0).Output(), "");
    EXPECT_EQ(NbWarnings(), 0);
}

TEST(SlcParser, ShowsNoMoreThanAThousandFaults)
{
    std::string source = "surface s() {\n";
    for (int i = 0; i < 3000; ++i)
        source += "$\n";
    const ParsedSource parsed(source + "}");
    EXPECT_EQ(NbErrors(), 3000);
    EXPECT_LT(parsed.Output().size(), 80000U);
    EXPECT_TRUE(parsed.Output().ends_with("More faults in the source are counted, not shown\n"));

    std::string oneLine = "surface s() {";
    for (int i = 0; i < 3000; ++i)
        oneLine += std::string(300, ' ') + "$";
    EXPECT_LT(ParsedSource(oneLine + "}").Output().size(), 1000 * 2 * 8300U);
    EXPECT_EQ(NbErrors(), 3000);
}
