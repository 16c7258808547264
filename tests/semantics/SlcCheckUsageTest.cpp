// Checks the reports on reads of variables that are not set, and their warning levels.

#include "semantics/SlcCheckUsage.h"

#include <gtest/gtest.h>

#include "helpers/CheckedShader.h"

namespace {

const std::string k_isNot = "WARNING: Variable 'x' is not initialized";
const std::string k_mayNot = "WARNING: Variable 'x' may not be initialized";
const std::string k_isUsed = "WARNING: Variable 'x' is used without being initialized";
const std::string k_mayBeUsed = "WARNING: Variable 'x' may be used without being initialized";

struct UsageCase {
    // The rest of a body, after the parameter n and `float x, y = 0;`. If it contains "surface", it
    // is a whole text.
    const char* source;
    std::string reports;  // "" for none
};

std::string UsageOf(const std::string& source, int level = 2)
{
    const bool isWhole = source.find("surface") != std::string::npos;
    const std::string text =
        isWhole ? source : "surface a(uniform float n = 3) { float x, y = 0; " + source + " }";
    return CheckedShader(text, {}, level).Reports();
}

void Expect(const UsageCase& c)
{
    EXPECT_EQ(UsageOf(c.source), c.reports) << c.source;
}

TEST(SlcCheckUsage, ReportsReadsBeforeAnyAssignment)
{
    const UsageCase cases[] = {
        {"y = x; x = 1;", "1: " + k_isNot},
        {"float z = x;", "1: " + k_isNot},
        {"x = x + 1;", "1: " + k_isNot},
        {"y = 2 * -x;", "1: " + k_isNot},
        {"y = max(1, x);", "1: " + k_isNot},
        {"Ci = color(1, x, 0);", "1: " + k_isNot},
        {"y = (x > 0) ? 1 : 2;", "1: " + k_isNot},
        {"if (y > 0 && !(x < 1)) y = 1;", "1: " + k_isNot},
        {"while (x > 0) x = 0;", "1: " + k_isNot},
        {"for (y = x; y < 1; y += 1) Ci = y;", "1: " + k_isNot},
        {"for (y = 0; y < 3; y += x) Ci = y;", "1: " + k_isNot},
        {"float b[2] = {x, 1};", "1: " + k_isNot},
        {"float b[2] = {1, 1};\n y = b[x];", "2: " + k_isNot},
        {"float b[2];\n b[x] = 1;", "2: " + k_isNot},
        {"Ci = texture(\"a\", x, t);", "1: " + k_isNot},
        {"illuminance(P, N, x) Ci += Cl;", "1: " + k_isNot},
        {"point q;\n setxcomp(q, x);", "2: " + k_isNot},
        {"printf(\"%f\", x);", "1: " + k_isNot},
        {"float b[2]; Ci = b[0];", "1: WARNING: Variable 'b' is not initialized"},
        {"if (u > 0) {\n y = x;\n y = x; }", "2: " + k_isNot + "\n3: " + k_isNot},
        {"{ float x = 1; y = x; } y = x;",
         "1: WARNING: The declaration of 'x' shadows one in an englobing scope\n1: " + k_isNot},
        {"x = 1; { float x;\n if (u > 0) y = x; }",
         "1: WARNING: The declaration of 'x' shadows one in an englobing scope\n2: " + k_isNot},
    };
    for (const UsageCase& c : cases)
        Expect(c);
}

TEST(SlcCheckUsage, ReportsVariablesThatOnlySomePathsSet)
{
    const UsageCase cases[] = {
        {"if (u > 0) x = 1;\n y = x;", "2: " + k_mayNot},
        {"if (u > 0) { if (v > 0) x = 1; else x = 2; } y = x;", "1: " + k_mayNot},
        {"if (u > 0) x = 1; else if (v > 0) x = 2; else y = 1; y = x;", "1: " + k_mayNot},
        {"if (u > 0) x = 1; else\n y = x;", "2: " + k_isNot},
        {"y = (u > 0) ? (x = 1) : 2; y = x;", "1: " + k_mayNot},
        {"while (y < n) { x = 1; y += 1; } y = x;", "1: " + k_mayNot},
        {"for (y = 0; y < n; y += 1) x = y; y = x;", "1: " + k_mayNot},
        {"for (y = 0; y < 0; y += 1) x = y; y = x;", "1: " + k_mayNot},
        {"for (y = 0; y < 3; y += 1) { if (u > y) break; x = y; } y = x;", "1: " + k_mayNot},
        {"uniform float i; for (i = 0; i < 3; i += 1) { for (y = 0; y < 3; y += 1) { "
         "if (u > y) continue 2; Ci = 1; } x = y; } y = x;",
         "1: " + k_mayNot},
        {"illuminance(P, N, 1) x = 1; y = x;", "1: " + k_mayNot},
        {"while (u > y) { if (v > y) { x = 1; break; } y += 1; } y = x;", "1: " + k_mayNot},
        {"while (u > y) { break;\n y = x; } x = 1;", ""},  // never reached
    };
    for (const UsageCase& c : cases)
        Expect(c);
}

TEST(SlcCheckUsage, AcceptsVariablesThatAreSet)
{
    const UsageCase cases[] = {
        {"Ci = indirectdiffuse(P, N, 8, \"axis\", 1, \"occlusion\", x); y = x;", ""},
        {"x = 1; y = x;", ""},
        {"if (u > 0) x = 1; else x = 2; y = x;", ""},
        {"y = (u > 0) ? (x = 1) : (x = 2); y = x;", ""},
        {"x += 1; y = x;", ""},
        {"for (x = 0; x < n; x += 1) y += 1; y = x;", ""},
        {"while ((x = y) < 0) y += 1; y = x;", ""},
        {"for (y = 2; -1 <= y; y -= 1) x = y; y = x;", ""},
        // A path that ends in a jump does not reach the code that follows.
        {"while (u > y) { float z; if (v > y) break; z = 1; y += z; }", ""},
        {"while (u > y) { if (v > y) continue; else x = 1; y += x; }", ""},
        {"while (u > y) { if (v > y) { if (s > y) break; x = 1; } else x = 2; y += x; }", ""},
        {"float b[3]; uniform float i; for (i = 0; i < 3; i += 1) b[i] = i; y = b[2];", ""},
        {"float e, c, d; unpack(1, x, c, d, e); y = x + c + d + e;", ""},
        {"point q; setxcomp(q, 1); P = q; fresnel(I, N, 1, x, y); y = x;", ""},
        {"Ci = Ci + Oi; y = n + PI;", ""},
        {"illuminance(P, N, 1) { color c = Cl; Ci += c * L . N; }", ""},
        {"surface a(output varying color sum = 0) { if (u > 0) sum = sum + Cs; }", ""},
        // One fault gives one report.
        {"y = z;", "1: ERROR: Undefined variable: z"},
    };
    for (const UsageCase& c : cases)
        Expect(c);
}

TEST(SlcCheckUsage, ReplaysFunctionsWhereTheyAreCalled)
{
    const UsageCase cases[] = {
        // These functions read variables of enclosing scopes; the last one reads its own local.
        {"float f() { return x + 1; }\n y = f();\n x = 1; y = f();", "2: " + k_isNot},
        {"float f() { extern float x; return x + 1; }\n y = f();\n x = 1; y = f();",
         "2: " + k_isNot},
        {"float f() { float z = 0; if (u > 0) z = x; return z; }\n y = f();", "2: " + k_mayNot},
        {"float f() { float z; if (u > 0) z = x; else z = 2 * x; return z; }\n y = f();",
         "2: " + k_isNot},
        {"float g() { float f() { return x; } return f(); }\n y = g();", "2: " + k_isNot},
        {"float f() { extern float x; y = x; x = 1; return y; }\n y = f();\n y = x;",
         "2: " + k_isNot},
        {"float f() { return x; } x = 1; { float x;\n y = f(); }",
         "1: WARNING: The declaration of 'x' shadows one in an englobing scope"},
        {"x = 1; float f() { float z; return z; }\n y = f() + f();",
         "1: WARNING: Variable 'z' is not initialized"},
        // These functions set variables of enclosing scopes.
        {"void f() { extern float x; x = 1; } f(); y = x;", ""},
        {"void f() { extern float x; if (u > 0) x = 1; } f();\n y = x;", "2: " + k_mayNot},
        {"void f() { extern float x; x = 1; } if (u > 0) f();\n y = x;", "2: " + k_mayNot},
        // Predefined variables have a value at each call of a function.
        {"float f() { extern float u; return u; } float g() { return f(); }\n"
         "surface a() { Ci = g(); }",
         ""},
    };
    for (const UsageCase& c : cases)
        Expect(c);
}

TEST(SlcCheckUsage, ChecksOutputArgumentsAtTheCall)
{
    const UsageCase cases[] = {
        {"void f(output float r) { r = 1; } f(x); y = x;", ""},
        {"void f(output float r) { r = r + 1; }\n f(x); y = x;", "2: " + k_isUsed},
        {"void f(output float r) { r = r + 1; }\n x = 1; f(x);", ""},
        {"void f(output float r) { r = r + 1; } if (u > 0) { x = 1; f(x); }", ""},
        {"void f(output float r) { r = r + 1; } if (u > 0) x = 1;\n f(x);", "2: " + k_mayBeUsed},
        {"void f(output float r) { if (u > 0) r = r + 1; }\n f(x);\n y = x;",
         "2: " + k_mayBeUsed + "\n3: " + k_mayNot},
        {"void f(output float r) { if (u > 0) r = 1; } f(x);\n y = x;", "2: " + k_mayNot},
        {"void f(output float r) { y = 1; } f(x);\n y = x;", "2: " + k_isNot},
        {"void f(output float r) { r += 1; } f(x); y = x;", ""},
        {"void f(output color c) { c = c + 1; } f(Ci);", ""},
        // A formal that is passed on is checked at the outer call.
        {"void g(output float r) { void f(output float q) { q = q + 1; } f(r); } x = 1; g(x);", ""},
        {"void g(output float r) { void f(output float q) { q = q + 1; } f(r); }\n g(x);",
         "2: " + k_isUsed},
        {"void f(output float r; float z) { r = z; }\n f(x, x);",
         "2: WARNING: Variable 'x' is both input 'z' and output 'r' of 'f': what is written to "
         "'r' is read from 'z'\n2: " +
             k_isNot},
        {"void f(output float r; float z) { r = z; } x = 1; f(x, x + 0);", ""},
    };
    for (const UsageCase& c : cases)
        Expect(c);
}

TEST(SlcCheckUsage, FollowsDeepAndLongCode)
{
    // Each branch sets a different variable, so the record of what a branch sets grows with the
    // number of branches inside it.
    std::string branches;
    std::string ends;
    for (int i = 0; i < 2000; ++i) {
        const std::string name = "z" + std::to_string(i);
        branches = "float " + name + ";\n" + branches + "if (u > 0) { " + name + " = 1;\n";
        ends += "} else x = 1;\n";
    }
    std::string sum = "z7";
    for (int i = 0; i < 9000; ++i)
        sum += "\n+ 1";
    EXPECT_EQ(UsageOf(branches + ends + " y = " + sum + ";"),
              "6001: WARNING: Variable 'z7' may not be initialized");
}

TEST(SlcCheckUsage, ReportsByLevel)
{
    const std::string source = "void f(output float r) { r = r + 1; }\n f(x); float z;\n y = z;";
    EXPECT_EQ(UsageOf(source, 0), "");
    EXPECT_EQ(UsageOf(source, 1), "2: " + k_isUsed);
    EXPECT_EQ(UsageOf(source, 2),
              "2: " + k_isUsed + "\n3: WARNING: Variable 'z' is not initialized");
}

}  // namespace
