// Checks errors and warnings about the declarations, functions and statements of a shader.

#include <gtest/gtest.h>

#include <string>

#include "helpers/CheckedShader.h"
#include "symbols/SlcSymbolEntry.h"

namespace {

struct Case {
    const char* source;
    const char* reports;  // all of them, in order
};

template <std::size_t Count>
void ExpectReports(const Case (&cases)[Count], const SlcOptionsControl& options = {})
{
    for (const Case& c : cases) {
        const CheckedShader shader(c.source, options);
        EXPECT_EQ(shader.Reports(), c.reports) << c.source;
        EXPECT_EQ(shader.IsAccepted(), shader.Reports().find(": ERROR: ") == std::string::npos)
            << c.source;
    }
}

TEST(SlcCheckSemantics, RequiresExactlyOneShader)
{
    static const Case cases[] = {
        {"float f(float x) { return y; }",
         "1: ERROR: No shader has been defined (only functions).  No compilation is performed."},
        {"surface a() { Ci = Cs; }\nsurface b() { Ci = nonsense; }",
         "2: ERROR: Cannot define more than one shader per file"},
    };
    ExpectReports(cases);
}

TEST(SlcCheckSemantics, DeclaresVariablesOnce)
{
    static const Case cases[] = {
        {"surface a() { float x, x; Ci = 1; }", "1: ERROR: Illegal redefinition of variable: x"},
        {"surface a(float k = 1; color k = 2) { Ci = k; }",
         "1: ERROR: Illegal redefinition of variable: k"},
        {"float f(float a, a) { return a; }\nsurface s() { Ci = f(1, 2); }",
         "1: ERROR: Illegal redefinition of variable: a"},
        {"surface a() { float x = 1; { float x = 2; Ci = x; } Oi = x; }",
         "1: WARNING: The declaration of 'x' shadows one in an englobing scope"},
        {"surface a(float k = 1) { float k = 2; Ci = k; }",
         "1: WARNING: The declaration of 'k' shadows one in an englobing scope"},
        {"surface a() { float s = 2; Ci = s; }",
         "1: WARNING: The declaration of 's' shadows one in an englobing scope"},
        {"float f(float x) { float s = x; return s; }\nsurface a() { Ci = f(1); }", ""},
        {"surface a() { { float x = 1; Oi = x; } { color x = 1; Ci = x; } }", ""},
        {"surface a() { x = 1; float x = 2; Ci = x; }",
         "1: ERROR: Undefined variable: x\n1: ERROR: Illegal redefinition of variable: x"},
        {"surface a() { void x; void y[2]; Ci = x; }",
         "1: ERROR: Variable 'x' cannot be of type void\n"
         "1: ERROR: Variable 'y' cannot be of type void"},
        {"float f(float a) { float x = a; float x = 1; { float y[2]; float y[2] = {a, a}; }\n"
         "return x; }\nsurface s() { Ci = f(u); }",
         "1: ERROR: Illegal redefinition of variable: x\n"
         "1: ERROR: Illegal redefinition of variable: y"},
        {"void[] g() { }\nvoid f(void[] x) { }\nsurface a() { void[2.0] y; g(); Ci = 1; }",
         "1: ERROR: Function 'g' cannot return an array of type void\n"
         "1: WARNING: Function 'g' doesn't return a value\n"
         "2: ERROR: Variable 'x' cannot be of type void\n"
         "3: ERROR: Variable 'y' cannot be of type void"},
        {"surface a() { float[2.0] x[3]; float[] y[3]; Ci = 1; }",
         "1: ERROR: Array variable 'x' cannot hold arrays\n"
         "1: ERROR: Array variable 'y' cannot hold arrays"},
    };
    ExpectReports(cases);
}

TEST(SlcCheckSemantics, ChecksInitializers)
{
    static const Case cases[] = {
        {"surface a() { color c = 1; point p = 2; vector w = 3; matrix m = 1; Ci = c; }", ""},
        {"surface a() { color c = (1, 0, 0); point p = (1, 0, 0); Ci = c; }", ""},
        {"surface a() { color c = noise(P); float f = noise(P); point p = noise(s, t); Ci = c; }",
         ""},
        {"surface a() { float f = Cs; Ci = f; }",
         "1: ERROR: Variable initialization type mismatch"},
        {"surface a() { float f = (1, 2, 3); Ci = f; }",
         "1: ERROR: Variable initialization type mismatch"},
        {"surface a() { string n = 1; Ci = 1; }",
         "1: ERROR: Variable initialization type mismatch"},
        {"void g() {}\nsurface a() { float f = g(); Ci = f; }",
         "2: ERROR: Variable initialization type mismatch"},
        {"surface a() { uniform float x = u; Ci = x; }",
         "1: ERROR: The expression initializing 'x' must be uniform"},
        {"surface a() { float y = 1; uniform float x = y; Ci = x; }",
         "1: ERROR: The expression initializing 'x' must be uniform"},
        {"surface a(varying float k = u; float j = 2; string n = \"x\") { Ci = k * j; }", ""},
        {"surface a(float k = u) { Ci = k; }",
         "1: ERROR: The expression initializing 'k' must be uniform"},
        {"surface a(varying string k = \"a\") { uniform string l = k; Ci = texture(l); }", ""},
    };
    ExpectReports(cases);
}

TEST(SlcCheckSemantics, ChecksArrays)
{
    static const Case cases[] = {
        {"surface a() { float x[3] = {1, 2, 3}; color c[2] = {1, (1, 0, 0)}; Ci = x[0] * c[1]; }",
         ""},
        {"surface a() { float x[] = {1, 2, 3}; float y[3] = {}; float z[2]; Ci = x[0]; }", ""},
        {"surface a(float k[] = {1, 2}; float j[2] = {1}) { Ci = k[0] + j[0]; }", ""},
        {"surface a() { float x[2] = {1, 2, 3}; Ci = x[0]; }",
         "1: ERROR: At most 2 elements expected for initializer of array variable 'x'"},
        {"surface a() { float x[2] = {Cs, Cs}; Ci = x[0]; }",
         "1: ERROR: Variable initialization base array type mismatch: x"},
        {"surface a() { float x[2] = {\"a\"}; Ci = x[0]; }",
         "1: ERROR: Variable initialization base array type mismatch: x"},
        {"surface a() { float x[]; Ci = x[0]; }",
         "1: ERROR: Array variable 'x' needs a size or an initializer"},
        {"surface a() { float x[] = {}; Ci = x[0]; }",
         "1: ERROR: Array variable 'x' needs a size or an initializer"},
        {"float f(float x[]) { return x[0]; }\nsurface a() { float x[2] = {1, 2}; Ci = f(x); }",
         ""},
        {"surface a() { float x[3] = {1, 2, 3}; float[] y = x; Ci = y[0]; }", ""},
        {"surface a() { float x = 1; float y[] = {x, x, x}; uniform float z[1] = {x}; Ci = y[0]; }",
         "1: ERROR: The expression initializing 'z' must be uniform"},
    };
    ExpectReports(cases);
}

TEST(SlcCheckSemantics, TakesLengthOfArrayFromInitializer)
{
    const CheckedShader shader("surface a(float k[] = {1, 2}) { Ci = k[1]; }");
    ASSERT_EQ(shader.Reports(), "");
    auto* definition = static_cast<SlcShaderDefNode*>(shader.Definition("a"));
    const auto& formal = definition->GetFormals()->GetVarDefs()[0]->GetDefExprs()->GetDefExprs()[0];
    EXPECT_EQ(formal->GetSymbolEntry()->GetType()->ToString(), "float[2]");
}

TEST(SlcCheckSemantics, FindsExternVariables)
{
    static const Case cases[] = {
        {"color f() { extern point P; extern color Cs; return Cs * noise(P); }\n"
         "surface a() { Ci = f(); }",
         ""},
        {"surface a(float Kd = 1) {\n"
         "color f() { extern uniform float Kd; return Kd; }\n"
         "Ci = f(); }",
         ""},
        {"surface a() { float x = 1;\n"
         "float f() { extern float x; x += 1; return x; }\n"
         "Ci = f(); }",
         ""},
        {"surface a() { color c[2] = {1, 0};\n"
         "color f() { extern color c[]; return c[1]; }\n"
         "Ci = f(); }",
         ""},
        {"color f() { extern color Cl; return Cl; }\n"
         "surface a() { illuminance(P) { Ci += f(); } }",
         ""},
        {"color f() { extern color Cl; return Cl; }\nlight a() { solar() { Cl = f(); } }", ""},
        {"color f() { extern color Cl; return Cl; }\ndisplacement a() { P += comp(f(), 0); }",
         "1: ERROR: No outer scope declaration for extern variable 'Cl'"},
        {"float f() { extern float nowhere; return nowhere; }\nsurface a() { Ci = f(); }",
         "1: ERROR: No outer scope declaration for extern variable 'nowhere'"},
        {"float f() { extern vector P; return 1; }\nsurface a() { Ci = f(); }",
         "1: ERROR: Extern declaration has no match in outer scope for variable 'P'"},
        {"float f() { extern uniform float u; return u; }\nsurface a() { Ci = f(); }",
         "1: ERROR: Extern declaration has no match in outer scope for variable 'u'"},
        {"surface a(float Kd = 1) {\n"
         "color f() { extern float Kd; return Kd; }\n"
         "Ci = f(); }",
         "2: ERROR: Extern declaration has no match in outer scope for variable 'Kd'"},
        {"float f() { extern float u = 2; return u; }\nsurface a() { Ci = f(); }",
         "1: ERROR: Extern variable 'u' cannot be initialized"},
    };
    ExpectReports(cases);
}

TEST(SlcCheckSemantics, HidesTheDefiningScopeInStrictMode)
{
    SlcOptionsControl strict;
    strict.m_strict = true;
    static const Case strictCases[] = {
        {"float f() { return u; }\nsurface a() { Ci = f(); }", "1: ERROR: Undefined variable: u"},
        {"surface a(float Kd = 1) { float f() { return Kd; } Ci = f(); }",
         "1: ERROR: Undefined variable: Kd"},
        {"float f() { extern float u; return u; }\nsurface a() { Ci = f(); }", ""},
        {"surface a(float Kd = 1) { float f() { extern uniform float Kd; return Kd; } Ci = f(); }",
         ""},
        {"surface a() { float x = 1; { float f() { extern float x; return x; } Ci = f(); } }", ""},
    };
    ExpectReports(strictCases, strict);
    static const Case looseCases[] = {
        {"float f() { return u; }\nsurface a() { Ci = f(); }", ""},
        {"surface a(float Kd = 1) { float f() { return Kd; } Ci = f(); }", ""},
        {"surface a() { float x = 1; { float f() { return x; } Ci = f(); } }", ""},
        {"surface a() { float f() { return x; } float x = 1; Ci = f() * x; }",
         "1: ERROR: Undefined variable: x"},
    };
    ExpectReports(looseCases);
}

TEST(SlcCheckSemantics, ChecksReturns)
{
    static const Case cases[] = {
        {"surface a() { return 1; }", "1: ERROR: Cannot return a value from a shader"},
        {"surface a() { return nowhere; }",
         "1: ERROR: Undefined variable: nowhere\n1: ERROR: Cannot return a value from a shader"},
        {"float f(float x) { if (x > 0) return 1; else return 2; }\nsurface a() { Ci = f(u); }",
         "1: ERROR: Cannot have more than one 'return' statement inside the same function"},
        {"void f() { return 1; }\nsurface a() { f(); Ci = 1; }",
         "1: ERROR: Cannot return a value from a function with 'void' return type"},
        {"float f() { float x = 1; }\nsurface a() { Ci = f(); }",
         "1: WARNING: Function 'f' doesn't return a value"},
        {"void f() { float x = 1; }\nsurface a() { f(); Ci = 1; }", ""},
        {"float f() { return \"x\"; }\nsurface a() { Ci = f(); }",
         "1: ERROR: Type mismatch for the 'return' expression type"},
        {"float f() { return (1, 2, 3); }\nsurface a() { Ci = f(); }",
         "1: ERROR: Type mismatch for the 'return' expression type"},
        {"color f() { return 1; }\nvector g() { return (1, 2, 3); }\n"
         "surface a() { Ci = f() * xcomp(g()); }",
         ""},
        {"surface a() { float f() { float g() { return 1; } return g(); } Ci = f(); }", ""},
    };
    ExpectReports(cases);
}

TEST(SlcCheckSemantics, DefinesFunctionsAfterTheirBodies)
{
    static const Case cases[] = {
        {"float f(float x) { return f(x - 1); }\nsurface a() { Ci = f(1); }",
         "1: ERROR: Undefined function: f"},
        {"float f(float x) { return g(x); }\nfloat g(float x) { return f(x); }\n"
         "surface a() { Ci = g(1); }",
         "1: ERROR: Undefined function: g"},
        {"float f(float x) { return x; }\nfloat f(color c) { return f(comp(c, 0)); }\n"
         "surface a() { Ci = f(Cs); }",
         ""},
        {"surface a() { Ci = f(1); }\nfloat f(float x) { return x; }",
         "1: ERROR: Undefined function: f"},
    };
    ExpectReports(cases);
}

TEST(SlcCheckSemantics, WarnsOfAFunctionThatReplacesAnother)
{
    static const Case cases[] = {
        {"float f(point p) { return 1; }\nfloat f(normal n) { return 2; }\nsurface s() {}",
         "2: WARNING: The function 'float f(normal)' replaces 'float f(point)' of test.sl:1"},
        {"surface s() { void g() {}\nvoid g() {} }",
         "2: WARNING: The function 'void g()' replaces 'void g()' of test.sl:1"},
        // no function with other types or in another scope, and no built-in, is replaced
        {"float f(float a) { return 1; }\nfloat f(color a) { return 1; }\n"
         "color f(float a) { return 1; }\nfloat f(float a[]) { return 1; }\n"
         "float f(float a[3]) { return 1; }\nfloat sqrt(float a) { return 1; }\n"
         "surface s() { float f(float a) { return 1; } }",
         ""},
    };
    ExpectReports(cases);
}

TEST(SlcCheckSemantics, ChoosesTheOverloadOfACallStatement)
{
    static const Case cases[] = {
        {"float f() { return 1; }\nvoid f() {}\nsurface a() { f(); Ci = 1; }",
         "3: WARNING: Ambiguous function return type. Picking function version with the void "
         "return type: f"},
        {"float f() { return 1; }\ncolor f() { return 1; }\nsurface a() { f(); Ci = 1; }",
         "3: ERROR: Cannot determine which version of function to call: f"},
        {"float f() { return 1; }\nsurface a() { f(); printf(\"x\"); Ci = 1; }", ""},
    };
    ExpectReports(cases);
    SlcOptionsControl strict;
    strict.m_strict = true;
    static const Case strictCases[] = {
        {"float f() { return 1; }\nvoid f() {}\nsurface a() { f(); Ci = 1; }",
         "3: ERROR: Cannot determine which version of function to call: f"},
    };
    ExpectReports(strictCases, strict);
}

TEST(SlcCheckSemantics, ChecksLoopJumps)
{
    static const Case cases[] = {
        {"surface a() { break; }", "1: ERROR: Can use break only from within a for/while loop"},
        {"surface a() { illuminance(P) { continue; } }",
         "1: ERROR: Can use continue only from within a for/while loop"},
        {"surface a() { float i; while (i < 1) { break 2; } }",
         "1: ERROR: Cannot break that many levels"},
        {"surface a() { float i; for (i = 0; i < 1; i += 1) { continue 0; } }",
         "1: ERROR: Invalid level for continue"},
        {"surface a() { float i; while (i < 1) while (i < 2) { if (i > 0) break 2; continue; } }",
         ""},
        {"surface a() { float i; while (i < 1) { i += 1; } break; }",
         "1: ERROR: Can use break only from within a for/while loop"},
        {"surface a() { float i; while (i < 1) { float f() { break; return 1; } i += f(); } }",
         "1: ERROR: Can use break only from within a for/while loop"},
    };
    ExpectReports(cases);
}

TEST(SlcCheckSemantics, ChecksExpressionStatements)
{
    static const Case cases[] = {
        {"surface a() { float i; for (i = 0; i < 2; i += \"a\") Ci = 1; }",
         "1: ERROR: Type mismatch for assignment: i"},
        {"surface a() { float i; for ((1, 2, 3); i < 2; i += 1) Ci = 1; }",
         "1: ERROR: Ambiguous type for expression"},
        {"surface a() { matrix m; float i; for (i = 0; i < 2; m + m) Ci = 1; }",
         "1: ERROR: Incompatible types for +"},
    };
    ExpectReports(cases);
}

TEST(SlcCheckSemantics, PrintsTheEnclosingFunctionAgainAfterALocalOneWithReports)
{
    const CheckedShader shader("surface a() {\nx = 1;\nfloat f() { return z; }\nw = 1;\n}");
    EXPECT_EQ(shader.Output(), "test.sl: In function a\n"
                               "test.sl:2: ERROR: Undefined variable: x\n"
                               "test.sl: In function f\n"
                               "test.sl:3: ERROR: Undefined variable: z\n"
                               "test.sl: In function a\n"
                               "test.sl:4: ERROR: Undefined variable: w\n");
    const CheckedShader quiet("surface a() {\nx = 1;\nfloat f() { return 1; }\ny = 1;\n}");
    EXPECT_EQ(quiet.Output(), "test.sl: In function a\n"
                              "test.sl:2: ERROR: Undefined variable: x\n"
                              "test.sl:4: ERROR: Undefined variable: y\n");
}

}  // namespace
