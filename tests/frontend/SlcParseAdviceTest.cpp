#include "frontend/SlcParseAdvice.h"

#include <gtest/gtest.h>

#include <sstream>

#include "helpers/ParsedSource.h"

namespace {

/// Returns the lines of advice at warning level 2, each without its file.
std::string AdviceOn(const std::string& source)
{
    std::istringstream lines(ParsedSource(source, 2).Output());
    std::string advice;
    for (std::string line; std::getline(lines, line);)
        if (const auto at = line.find(": ADVICE: "); at != std::string::npos)
            advice += (advice.empty() ? "" : "\n") + line.substr(line.find(':') + 1);
    return advice;
}

/// Returns the reports at warning level 2, except advice.
std::string ReportsWithoutAdvice(const std::string& source)
{
    std::istringstream lines(ParsedSource(source, 2).Reports());
    std::string reports;
    for (std::string line; std::getline(lines, line);)
        if (line.find(": ADVICE: ") == std::string::npos)
            reports += line + "\n";
    return reports;
}

struct Case {
    const char* source;
    const char* advice;
};

const char* const k_types = ": the language has no 'int', 'bool' or 'double', write 'float'";
const char* const k_comparison = ": a condition needs a comparison";
const char* const k_noValue = ": a comparison is no value, write '... ? 1 : 0'";
const char* const k_loop = ": a loop variable is declared before the loop";

}  // namespace

TEST(SlcParseAdvice, NamesTheTokenAndWhatWasMeant)
{
    const struct {
        const char* statement;
        const char* token;
        std::string hint;
    } cases[] = {
        {"x = );", "')'", ": no '(' is open"},
        {"x = 1 2;", "'2'", ": an operator or a ';' is missing before it"},
        {"int i = 0;", "'i'", k_types},
        {"uniform double i = 0;", "'double'", k_types},
        {"bool f() { return 1; }", "'f'", k_types},
        {"Float x = 1;", "'x'", ": 'Float' is no type"},
        {"float texture = 1;", "'texture'", ": a word of the language is no name"},
        {"float[3] x;", "'3'",
         ": the length of an array is written after its name, that of a result as '3.0'"},
        {"float x[3.0];", "'3.0'", ": the length of an array is a whole number without a point"},
        {"class a { }", "'a'", ": classes belong to a later revision of the language"},
        {"shader a = f(1);", "'a'", ": shader objects belong to a later revision of the language"},
        {"a->f(1);", "'-'", ": methods belong to a later revision of the language"},
        {"i++;", "'+'", ": there is no '++', write '+= 1'"},
        {"++i;", "'+'", ": there is no '++', write '+= 1'"},
        {"x = i++ + 1;", "'+'", ": there is no '++', write '+= 1'"},
        {"i--;", "'-'", ": there is no '--', write '-= 1'"},
        {"x = f(i--);", "')'", ": there is no '--', write '-= 1'"},
        {"for (i = 0; i < 1; i++) x = i;", "'+'", ": there is no '++', write '+= 1'"},
        {"for (float i = 0; i < 1; i += 1) x = i;", "'='", k_loop},
        {"for (uniform float i = 0; i < 1; i += 1) x = i;", "'uniform'", k_loop},
        {"for (i = 0; i; i += 1) x = i;", "';'", k_comparison},
        {"if (x) y = 1;", "'y'", k_comparison},
        {"if (x = 1) y = 1;", "'y'", k_comparison},
        {"while (f(x)) y = 1;", "'y'", k_comparison},
        {"if (!x) y = 1;", "')'", k_comparison},
        {"if (x && y > 1) y = 1;", "'&&'", k_comparison},
        {"if (y > 1 || x) y = 1;", "')'", k_comparison},
        {"y = x ? 1 : 2;", "'?'", k_comparison},
        {"x = y && z;", "'&&'", k_noValue},
        {"float x = y > 1 && z > 1;", "';'", k_noValue},
        {"if (y > 1) x = z < 1;", "';'", k_noValue},
        {"x == 1;", "'=='", ": write '=' to assign"},
        {"else x = 1;", "'else'", ": there is no 'if' before it"},
        {"return;", "';'", ": a 'return' needs a value"},
        {"x;", "';'", ": a name alone is no statement"},
        {"x = f(1;", "';'", ": a ')' is missing before it"},
        {"if (x > 1 { y = 1; }", "'{'", ": a ')' is missing before it"},
        {"x = f(1));", "')'", ": no '(' is open"},
        {"x = 1 ** 2;", "'*'", ": there is no '**', call 'pow'"},
        {"x = mix(x y, 1);", "'y'", ": a ',' is missing before it"},
        {"x = f(x, (1, 2 3)) * 2;", "'3'", ": a ',' is missing before it"},
        {"float a = 1; x = f(g(a, 2);", "';'", ": a ')' is missing before it"},
        {"float f(float a { return a; }", "'{'", ": a ')' is missing before it"},
        {"while x < 2) y = 1;", "')'", ": no '(' is open"},
        {"f(1)", "'}'", ": a ';' is missing before it"},
        {"if (x <> y) x = y;", "'>'", ": there is no '<>', write '!='"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(AdviceOn("surface s() { " + std::string(c.statement) + " }"),
                  "1: ADVICE: unexpected " + std::string(c.token) + c.hint)
            << c.statement;
}

TEST(SlcParseAdvice, ExplainsFaultsOfBracesAndDefinitions)
{
    static const Case cases[] = {
        {"surface s()\n{\nx = 1;\n",
         "5: ADVICE: unexpected end of the file: the brace of line 2 is never closed"},
        {"surface s() {\n  if (x > 1) {\n    y = 1;\n}\n",
         "6: ADVICE: unexpected end of the file: the brace of line 1 is never closed; by the "
         "indentation, the one of line 2"},
        {"float f() {\nreturn 1;\nsurface s() {}\n",
         "3: ADVICE: unexpected 's': the brace of line 1 is still open"},
        {"surface s() {\nif (x > 1)\ny = 1;\n}\ny = 1;\n}",
         "5: ADVICE: unexpected '=': the brace of line 1 is closed on line 4 already"},
        {"surface s() {\n}\n}", "3: ADVICE: unexpected '}': no brace is open"},
        {"surface s()\nx = 1;\n}", "2: ADVICE: unexpected 'x': a '{' is missing before it"},
        {"surface {}", "1: ADVICE: unexpected '{': a shader needs a name"},
        {"surface () {}",
         "1: ADVICE: 'surface' is taken for the name of a function: a shader needs a name"},
        {"Shader s() {}", "1: ADVICE: unexpected 's': 'Shader' is no type"},
        {"float f() { return 1; }\nclass a() { }",
         "2: ADVICE: unexpected 'a': classes belong to a later revision of the language"},
        {"float f() { return 1; } public float a() { }",
         "1: ADVICE: unexpected 'float': classes belong to a later revision of the language"},
        {"struct a { float b; }",
         "1: ADVICE: unexpected 'a': structures belong to a later revision of the language"},
        {"surface s() { gather(\"a\", P) { } }",
         "1: ADVICE: a call takes no block: such statements belong to a later revision of the "
         "language"},
        {"surface s() { gather(\"a\", P) { if (x > 1) x = 2; } else { x = 1; } x = 3; }",
         "1: ADVICE: a call takes no block: such statements belong to a later revision of the "
         "language"},
        {"surface s() { gather(\"a\", P) { } else if (x > 1) x = 1; else { x = 2; } x = 3; }",
         "1: ADVICE: a call takes no block: such statements belong to a later revision of the "
         "language"},
        {"surface s() {\ngather(\"a\", P) x = 1; else x = 2;\nx = 3; }",
         "2: ADVICE: unexpected 'x': 'gather' belongs to a later revision of the language"},
        {"surface s() {\nclass a(float k; float j) { float x; void f() { x = 2; } }\nx = 1;\nx = 2 "
         "3; }",
         "2: ADVICE: unexpected 'a': classes belong to a later revision of the language\n"
         "4: ADVICE: unexpected '3': an operator or a ';' is missing before it"},
        {"surface s() {\nstruct { float x; float y; } z;\nx = 1; }",
         "2: ADVICE: unexpected '{': structures belong to a later revision of the language"},
        {"surface s() { float x = 99999999999; }",
         "1: ADVICE: a number in an expression may be larger if it has a point: '99999999999.0'"},
        {"surface s(float a = 1, float b = 2) {}",
         "1: ADVICE: unexpected 'float': groups of formals are separated by ';'"},
        {"surface s() {\nf(1)\nx = 1;\n}",
         "3: ADVICE: unexpected 'x': a ';' may be missing at the end of line 2"},
        {"surface s() {\nfloat x = 1\nx = 2;\n}", ""},  // the error itself says "';' expected"
        {"surface s() {\nfloat x = 1 y = 2;\n}",
         "2: ADVICE: unexpected 'y': a ',' is missing before it"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(AdviceOn(c.source), c.advice) << c.source;
        // Without advice, the tokens before the first fault are followed only then.
        EXPECT_EQ(ParsedSource(c.source).Reports(), ReportsWithoutAdvice(c.source)) << c.source;
    }
}

TEST(SlcParseAdvice, IsNotPrintedBelowTheSecondLevel)
{
    EXPECT_EQ(ParsedSource("surface s() { int i = 0; }").Output().find("ADVICE"),
              std::string::npos);
}

TEST(SlcParseAdvice, DoesNotResumeInTheHeadOfALoop)
{
    static const struct {
        const char* head;
        const char* resumed;  // the line where compilation resumes: that of a fault at a ";"
    } cases[] = {
        {"float i = 0; i < 1; i += 1", "3"},
        {"int i = (1; 2", "3"},
        {"i = 0; i < 1; i++", "3"},
        {"i = 0; i; i += f(1)", "2"},
        {";;", "2"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(
            ParsedSource("surface s() {\nfor (" + std::string(c.head) + ")\nx = 1;\ny = );\n}")
                .Reports(),
            std::string("2: ERROR: parse error\n") + c.resumed +
                ": WARNING: Compilation resumes here\n"
                "4: ERROR: parse error\n4: WARNING: Compilation resumes here\n")
            << c.head;
}

TEST(SlcParseAdvice, ResumesAtTheBlockAfterAHead)
{
    // `head`, on line 2, gives one error, and the fault on line 5 gives the other.
    const std::string block = "\nx = 1; { y = 2; }\n}";
    const std::string fault = ": ERROR: parse error\n";
    const std::string resumed = ": WARNING: Compilation resumes here\n";
    for (const char* head :
         {"if (x > 1 {", "if x > 1) {", "if ((x > 1) {", "if (x > 1)) {", "if [x > 1) {",
          "if (x > 1] {", "if (x) {", "if (f(x > 1) {", "while (x > 1 {",
          "for (x = 1; x < 2; x += 1 {", "for x = 1; x < 2; x += 1) {",
          "for (x = 1; x < 2; x += 1)) {", "illuminance (P, N {", "float f(float a; float b {"}) {
        const bool isIf = std::string_view(head).starts_with("if");
        const std::string more = isIf ? " else { y = 3; }" : "";
        EXPECT_EQ(ParsedSource("surface s() {\n" + std::string(head) + block + more + "\ny = );\n}")
                      .Reports(),
                  "2" + fault + "2" + resumed + "5" + fault + "5" + resumed)
            << head;
    }
}
