// Checks the rules of uniform and varying, on statements as written and for each call of a
// function, and the rules of light statements in called functions.

#include <gtest/gtest.h>

#include <string>

#include "frontend/SlcCodeWalker.h"
#include "frontend/SlcNodes.h"
#include "helpers/CheckedShader.h"
#include "semantics/SlcFuncInfo.h"
#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcPossibleTypes.h"

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

/// Collects the details of the values that the assignment statements of a tree assign.
class AssignedDetails : public SlcCodeWalker {
public:
    std::string operator()(SlcSyntaxNode* node)
    {
        node->ApplyWalker(this);
        return m_text;
    }

private:
    using SlcCodeWalker::Case;
    void Case(SlcAssignStmtNode* node) override
    {
        const auto types = SlcPossibleTypes::Of(node->GetAssignment()->GetValue());
        m_text += (m_text.empty() ? "" : " ") + types->GetDetail()->ToString();
    }
    void Default(SlcSyntaxNode* node) override { node->WalkIn(this); }

    std::string m_text;
};

bool IsCalled(const CheckedShader& shader, const char* function)
{
    auto* definition = dynamic_cast<SlcFuncDefNode*>(shader.Definition(function));
    return CheckCast<SlcFuncInfo>(definition->GetSymbolEntry()->GetFuncInfo())->IsCalled();
}

TEST(SlcCheckDetail, CombinesTheDetailsOfOperands)
{
    struct Expression {
        const char* text;
        const char* detail;
    };
    // k is uniform, w varying, x unknown; a is a uniform array.
    static const Expression expressions[] = {
        {"1", "uniform"},
        {"k", "uniform"},
        {"w", "varying"},
        {"x", "unknown"},
        {"k + x", "unknown"},
        {"k + x + w", "varying"},
        {"-k", "uniform"},
        {"-(x * w)", "varying"},
        {"a[1]", "uniform"},
        {"a[x]", "unknown"},
        {"a[w]", "varying"},
        {"xcomp((k, k, k))", "uniform"},
        {"xcomp((k, x, k))", "unknown"},
        {"xcomp(point (k, x, w))", "varying"},
        {"k > 0 ? k : 1", "uniform"},
        {"k > 0 ? k : w", "varying"},
        {"w > 0 ? k : 1", "varying"},
        {"(k > 0 && x > 0) ? k : 1", "unknown"},
        {"(k > 0 || !(w > 0)) ? (x > 0 ? 1 : 2) : 1", "varying"},
        {"sin(k)", "uniform"},
        {"atan(k, w)", "varying"},
        {"mod(x, k)", "unknown"},
        {"float texture(\"a\")", "varying"},
        {"comp(diffuse(N), 0)", "varying"},
        {"raylevel()", "uniform"},
        {"random()", "unknown"},
        {"xcomp(faceforward(vector k, vector k, vector k))", "uniform"},
        {"xcomp(faceforward(vector k, vector k))", "varying"},
        {"determinant(matrix (1,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,x))", "unknown"},
    };
    for (const Expression& e : expressions) {
        const CheckedShader shader(
            std::string("surface a(float k = 1; varying float w = 1; float a[] = {1, 2}) {"
                        "float x; float r; r = ") +
            e.text + "; }");
        ASSERT_EQ(shader.Reports(), "") << e.text;
        EXPECT_EQ(AssignedDetails()(shader.Root()), e.detail) << e.text;
    }
}

TEST(SlcCheckDetail, GivesACallWithoutArgumentsTheDetailOfItsContext)
{
    const CheckedShader shader("surface a() {\n"
                               "varying float w = random(); uniform float k = random(); float x;\n"
                               "k = random(); w = random(); x = random(); k = 2 * random(); }");
    EXPECT_EQ(shader.Reports(), "");
    EXPECT_EQ(AssignedDetails()(shader.Root()), "uniform varying unknown uniform");
}

TEST(SlcCheckDetail, RefusesToAssignToUniform)
{
    static const Case cases[] = {
        {"surface a() { uniform float k; k = u; }",
         "1: ERROR: Assignment detail mismatch (should be varying): k"},
        {"surface a() { uniform float k[2]; k[0] += u; }",
         "1: ERROR: Assignment detail mismatch (should be varying): k[...]"},
        {"float f(float x) { uniform float k; k = x; return k; }\nsurface a() {}",
         "1: ERROR: Assignment detail mismatch: k"},
        {"surface a() { uniform float k; k = u > 0.5 ? 1 : 2; }",
         "1: ERROR: Assignment detail mismatch (should be varying): k"},
        {"surface a() { nowhere = u; }", "1: ERROR: Undefined variable: nowhere"},
        {"surface a() { uniform float k[2]; k[u] = 1; float x = k[u]; }",
         "1: ERROR: Assignment detail mismatch (should be varying): k[...]"},
        {"surface a() { uniform float k; float x; varying float w; x = k; w = x; x = w; w = k; }",
         ""},
    };
    ExpectReports(cases);
}

TEST(SlcCheckDetail, ChecksArgumentsOfBuiltIns)
{
    static const Case cases[] = {
        {"surface a() { Ci = pnoise(u, v); }",
         "1: ERROR: Detail mismatch for argument 1 of function 'pnoise'"},
        {"surface a() { varying point p = P; setxcomp(p, 1); varying color c; setcomp(c, 0, u); }",
         ""},
        {"surface a() { setxcomp(-P, 1); }",
         "1: ERROR: Argument 0 of setxcomp must be a variable of a reference to an array. "
         "Formal is declared 'output'"},
        {"surface a(varying point q = 0) { setxcomp(q, 1); }",
         "1: ERROR: Read-only formal passed as argument 0 to the function 'setxcomp' cannot be "
         "used as an output parameter of this function."},
        {"surface a() { uniform float r, t2; fresnel(I, N, 1.5, r, t2); }",
         "1: ERROR: Argument 3 of function 'fresnel' cannot be uniform\n"
         "1: ERROR: Argument 4 of function 'fresnel' cannot be uniform"},
        {"surface a() { uniform point q[2]; setxcomp(q[u], 1); }",
         "1: ERROR: Argument 0 of function 'setxcomp' cannot be uniform"},
        {"void f(output float r) { r = 1; }\nsurface a() { uniform float k[2]; f(k[u]); }",
         "2: ERROR: Argument 0 of function 'f' cannot be uniform"},
        {"surface a() { Ci = trace(P, N, 1); }",
         "1: ERROR: Argument 2 of trace must be a variable of a reference to an array. "
         "Formal is declared 'output'"},
        {"surface a() { float x, y, z, w; unpack(u, x, y, z, w); unpack(u, x, y, z, 1); }",
         "1: ERROR: Argument 4 of unpack must be a variable of a reference to an array. "
         "Formal is declared 'output'"},
        {"surface a() { uniform float k; float r; r = surface(\"Kd\", k); r = option(\"a\", 1); }",
         "1: ERROR: Argument 1 of option must be a variable of a reference to an array. "
         "Formal is declared 'output'"},
        {"surface a() { varying vector d; Ci = occlusion(P, N, 4, \"maxdist\", 1, "
         "\"environmentdir\", d); }",
         ""},
        {"surface a() { uniform vector d; Ci = occlusion(P, N, 4, \"environmentdir\", d); }",
         "1: ERROR: Argument 4 of function 'occlusion' cannot be uniform"},
        // The arguments before the output include a promoted value.
        {"surface a(varying float k = 1) { Ci = indirectdiffuse(P, N, 8, \"axis\", 1, "
         "\"occlusion\", "
         "k); }",
         "1: ERROR: Read-only formal passed as argument 6 to the function 'indirectdiffuse' cannot "
         "be used as an output parameter of this function."},
        {"surface a() { Ci = indirectdiffuse(P, N, 8, \"axis\", 1, \"occlusion\", 0.5); }",
         "1: ERROR: Argument 6 of indirectdiffuse must be a variable of a reference to an array. "
         "Formal is declared 'output'"},
    };
    ExpectReports(cases);
}

TEST(SlcCheckDetail, ChecksArgumentsOfUserFunctions)
{
    static const Case cases[] = {
        {"float f(uniform float x) { return x; }\nsurface a() { float y = 1; Ci = f(y); }",
         "2: ERROR: Detail mismatch for argument 0 of function 'f'"},
        {"void f(output float x) { x = 1; }\nsurface a() { uniform float k; f(k); }",
         "2: ERROR: Detail mismatch for argument 0 of function 'f'"},
        {"void f(output float x) { x = 1; }\nsurface a() { f(2); }",
         "2: ERROR: Argument 0 of f must be a variable of a reference to an array. "
         "Formal is declared 'output'"},
        {"void f(output float x; output uniform float k) { x = 1; k = 2; }\n"
         "surface a(output varying float r = 1) { uniform float k; float y[2]; f(r, k); "
         "f(y[1], k); }",
         ""},
        {"void f(output float x) { x = 1; }\nvoid g(float x) { void h() { void i() {\n"
         "extern float x; f(x); } i(); } h(); }\nsurface a() { g(1); }",
         "3: ERROR: Read-only formal passed as argument 0 to the function 'f' cannot be used as an "
         "output parameter of this function."},
        {"void f(output float x) { x = 1; }\nvoid g(float x) { f(x); }\nsurface a() { g(1); }",
         "2: ERROR: Read-only formal passed as argument 0 to the function 'f' cannot be used as an "
         "output parameter of this function."},
    };
    ExpectReports(cases);
}

TEST(SlcCheckInlineDetail, ReportsErrorsThatOnlyACallCauses)
{
    static const Case cases[] = {
        {"float f(uniform float x) { return x; }\nfloat g(float y) { return f(y); }\n"
         "surface a() { Ci = g(1); }",
         ""},
        {"float f(uniform float x) { return x; }\nfloat g(float y) { return f(y); }\n"
         "surface a() { Ci = g(u); }",
         "2: ERROR: Detail mismatch for argument 0 of function 'f' during inlining"},
        {"float f(uniform float x) { return x; }\nfloat g(float y) { return f(y); }\n"
         "surface a() { Ci = g(u) + g(v) + g(1); }",
         "2: ERROR: Detail mismatch for argument 0 of function 'f' during inlining"},
        {"float f(uniform float x) { return x; }\n"
         "float g(float y) { float z = y * 2; return f(z); }\nfloat h(float y) { return g(y); }\n"
         "surface a() { Ci = h(1) + h(s); }",
         "2: ERROR: Detail mismatch for argument 0 of function 'f' during inlining"},
        {"float f(uniform float x) { return x; }\nfloat g(float y) { return 1; f(y); }\n"
         "surface a() { Ci = g(u); }",
         ""},
    };
    ExpectReports(cases);
}

TEST(SlcCheckInlineDetail, GivesTheDetailOfACall)
{
    struct Function {
        const char* text;
        const char* call;
        const char* detail;
    };
    static const Function functions[] = {
        {"float f(float x) { return x * 2; }", "f(1)", "uniform"},
        {"float f(float x) { return x * 2; }", "f(u)", "varying"},
        {"float f(float x) { float y = x; return sin(y); }", "f(1)", "uniform"},
        {"float f(float x) { varying float y = x; return y; }", "f(1)", "varying"},
        {"float f(float x) { float y = x; y = 1; return y; }", "f(1)", "unknown"},
        {"float f(float x) { float y = 1; y = x; return y; }", "f(u)", "varying"},
        {"float f(float x) { float y = 1, z; y = (z = x); return y; }", "f(u)", "varying"},
        {"float f(float x) { extern float u; return x; }", "f(1)", "uniform"},
        {"float f(float x) { extern float u; return x * u; }", "f(1)", "varying"},
        {"float f(float x) { return x > 0 ? 1 : 2; }", "f(1)", "uniform"},
        {"float f(float x) { return x > 0 ? 1 : 2; }", "f(u)", "varying"},
        {"float f(float x) { if (x > 0) return 1; }", "f(1)", "uniform"},
        {"float f(float x) { if (x > 0) return 1; }", "f(u)", "varying"},
        {"float f(float x) { while (x > 0) return 1; }", "f(1)", "varying"},
        {"float f(float x) { float y = x; }", "f(1)", "varying"},
        {"float f(float x[]) { return x[1]; }", "f(a)", "uniform"},
        {"float g(float x) { return x; }\nfloat f(float x) { return g(x) + g(1); }", "f(1)",
         "uniform"},
        {"float g(float x) { return x; }\nfloat f(float x) { return g(1) + g(x); }", "f(u)",
         "varying"},
        {"void g(float x; output float y) { y = x; }\n"
         "float f(float x) { float r = 1; g(x, r); return r; }",
         "f(u)", "varying"},
        {"float f(float x) { point p = 0; setxcomp(p, x); return ycomp(p); }", "f(u)", "varying"},
        {"float f(float x) { float r, t; fresnel(vector x, normal 1, x, r, t); return t; }", "f(u)",
         "varying"},
        {"float f(float x) { float a = 1, b; fresnel(vector 1, normal 1, 1.5, a, b); return a; }",
         "f(1)", "uniform"},
        {"float f(float x) { float a = 1, b;\n"
         "if (x > 0) fresnel(vector 1, normal 1, 1.5, a, b); return a; }",
         "f(u)", "varying"},
        {"float f(float x) { float a, b, c, d; unpack(x, a, b, c, d); return d; }", "f(u)",
         "varying"},
        {"float f() { return random(); }", "f()", "uniform"},
        {"float f(float x) { color c = 1; uniform float i; for (i = 0; i < 2; i += 1)\n"
         "setcomp(c, 0, x); return comp(c, 0); }",
         "f(1)", "uniform"},
    };
    for (const Function& f : functions) {
        const CheckedShader shader(
            std::string(f.text) +
            "\nsurface a(float a[] = {1, 2}) { uniform float k; k = " + f.call + "; }");
        const std::string reports = shader.Reports();
        const bool uniform = std::string(f.detail) == "uniform";
        EXPECT_EQ(reports.find("ERROR") == std::string::npos, uniform) << f.text << reports;
        EXPECT_EQ(
            AssignedDetails()(static_cast<SlcShaderDefNode*>(shader.Definition("a"))->GetBody()),
            f.detail)
            << f.text;
    }
}

// The call `random()` has the detail of its context, so contexts with different details must not
// share an evaluation of the body.
TEST(SlcCheckInlineDetail, EvaluatesABodyForTheDetailOfItsContext)
{
    for (const char* calls : {"w = f(); k = f();", "k = f(); w = f();"}) {
        const CheckedShader shader(std::string("float f() { return random(); }\n"
                                               "surface a() { varying float w; uniform float k; ") +
                                   calls + " }");
        EXPECT_EQ(shader.Reports(), "") << calls;
    }
}

TEST(SlcCheckInlineDetail, MarksTheFunctionsThatShaderCodeReaches)
{
    const CheckedShader shader(
        "float used() { return 1; }\n"
        "float only() { return used(); }\n"  // called by a function that nothing calls
        "float nothing() { return only(); }\n"
        "float parameter() { return 2; }\n"
        "float condition() { return 3; }\n"
        "float channel() { return 4; }\n"
        "float after() { return 5; }\n"
        "float chain(float x) {\n"
        "  float y = condition() > 1 ? 1 : 2;\n"
        "  if (x > 0) return texture(\"a\", channel(), 0);\n"
        "  y = after(); }\n"
        "surface a(float k = parameter()) { Ci = chain(u); }");
    EXPECT_EQ(shader.Reports(), "");
    for (const char* name : {"parameter", "condition", "channel", "after", "chain"})
        EXPECT_TRUE(IsCalled(shader, name)) << name;
    for (const char* name : {"used", "only", "nothing"})
        EXPECT_FALSE(IsCalled(shader, name)) << name;
}

TEST(SlcCheckInlineDetail, ChecksLightStatementsOfCalledFunctions)
{
    const std::string lit = "void f(point P) { illuminance(P) {} }\nvoid g(point P) { f(P); }\n";
    const std::string lighting = "void f(point P) { solar() {} }\nvoid g(point P) { f(P); }\n";
    const char* const illuminance =
        "ERROR: Cannot call a function containing a 'illuminance' statement from this type of "
        "shader: f";
    const char* const illuminate =
        "ERROR: Cannot call a function containing a 'illuminate' or 'solar' statement from this "
        "type of shader: f";
    struct Kind {
        const char* name;
        bool lit;
        bool lighting;
    };
    static const Kind kinds[] = {
        {"surface", true, false},       {"volume", true, false},  {"light", false, true},
        {"displacement", false, false}, {"imager", false, false},
    };
    for (const Kind& kind : kinds) {
        const std::string shader = std::string(kind.name) + " a() ";
        EXPECT_EQ(CheckedShader(lit + shader + "{ f(P); }").Reports(),
                  kind.lit ? "" : "3: " + std::string(illuminance));
        EXPECT_EQ(CheckedShader(lit + shader + "{ g(P); }").Reports(),
                  kind.lit ? "" : "2: " + std::string(illuminance));
        EXPECT_EQ(CheckedShader(lighting + shader + "{ f(P); }").Reports(),
                  kind.lighting ? "" : "3: " + std::string(illuminate));
        EXPECT_EQ(CheckedShader(lighting + shader + "{ g(P); }").Reports(),
                  kind.lighting ? "" : "2: " + std::string(illuminate));
    }
}

TEST(SlcCheckInlineDetail, RefusesCallsThatWouldNestLightStatements)
{
    const std::string functions = "void f(point P) { illuminance(P) {} }\n"
                                  "void g(point P) { f(P); }\n"
                                  "void h(point P) { g(P); }\n";
    EXPECT_EQ(CheckedShader(functions + "surface a() { illuminance(P) { f(P); } }").Reports(),
              "4: ERROR: Cannot call a function containing a 'solar', 'illuminate' or "
              "'illuminance' statement from inside of one of these statements (this will result "
              "in nesting those statements): f");
    for (const char* name : {"g", "h"})
        EXPECT_EQ(CheckedShader(functions + "surface a() { illuminance(P) { " + name + "(P); } }")
                      .Reports(),
                  std::string("4: ERROR: Cannot call a function that calls another function "
                              "containing a 'solar', 'illuminate' or 'illuminance' statement from "
                              "inside of one of these statements (this will result in nesting "
                              "those statements): ") +
                      name);
    EXPECT_EQ(CheckedShader(functions + "surface a() { h(P); }").Reports(), "");
}

TEST(SlcCheckInlineDetail, RequiresALightLoopAroundUsesOfItsLight)
{
    const std::string functions = "color f() { extern color Cl; return Cl; }\n"
                                  "color g() { return f(); }\n"
                                  "color h(point P) { extern color Cl; color c = 0;\n"
                                  "  illuminance(P) { c += Cl + f(); } return c; }\n"
                                  "color k() { extern vector L; color c = 0;"  // the axis reads L
                                  "  illuminance(P, L, 1) { c += Cl; } return c; }\n";
    EXPECT_EQ(CheckedShader(functions + "surface a() { illuminance(P) { Ci += f() + g(); }\n"
                                        "Ci += h(P); }")
                  .Reports(),
              "");
    for (const char* name : {"f", "g", "k"})
        EXPECT_EQ(CheckedShader(functions + "surface a() { Ci = " + name + "(); }").Reports(),
                  std::string("6: ERROR: Function '") + name +
                      "' uses the light of an 'illuminance' statement, and cannot be called "
                      "outside of one");
    EXPECT_EQ(CheckedShader("color f() { extern color Cl; return Cl; }\n"
                            "light a() { solar() { Cl = 1; } Cl = f(); }")
                  .Reports(),
              "");
}

TEST(SlcCheckInlineDetail, FollowsWritesOfLocalFunctionsToOuterVariables)
{
    // A call of `set` changes the detail of the next call of `get`.
    const CheckedShader shader("surface a() {\n"
                               "float x, y;\n"
                               "float get() { return x; }\n"
                               "void set(float z) { x = z; }\n"
                               "y = get(); set(u); y = get(); }");
    EXPECT_EQ(shader.Reports(), "");
    const auto* body = static_cast<SlcShaderDefNode*>(shader.Definition("a"))->GetBody();
    EXPECT_EQ(AssignedDetails()(body->GetStatements()[3].get()), "unknown");
    EXPECT_EQ(AssignedDetails()(body->GetStatements()[5].get()), "varying");
}

// After a write of a varying value, or a write at only some of the points, a local is not uniform.
// In a loop it is not uniform before the write either.
TEST(SlcCheckInlineDetail, FollowsEveryWriteOfALocal)
{
    static const char* const bodies[] = {
        "float y = 1, i; for (i = 0; i < 2; i += 1) { one(y); y += u; }",
        "float y = 1, i = 0; while (i < 2) { one(y); y += u; i += 1; }",
        "float y = 1; illuminance(P) { one(y); y = xcomp(L); }",
        // It takes two iterations until `y` is varying.
        "float y = 1, z = 1, i; for (i = 0; i < 3; i += 1) { one(y); y = z; z = u; }",
        "float y = 1, i, j; for (i = 0; i < 2; i += 1) { for (j = 0; j < 2; j += 1) one(y); y = u; "
        "}",
        "color c = 1; float i; for (i = 0; i < 2; i += 1) { one(comp(c, 0)); setcomp(c, 0, u); }",
        "color c = 1; uniform float i = 0; while (i < 2) { if (u > i) break; setcomp(c, 0, 2); i "
        "+= 1; }"
        "one(comp(c, 0));",
        // `break` leaves the light loop and the loop around it.
        "color c = 1; uniform float i; for (i = 0; i < 2; i += 1) { illuminance(P) { if (u > 0.5)"
        " break; } setcomp(c, 0, 2); } one(comp(c, 0));",
        "color c = 1; if (u > 0.5) setcomp(c, 0, 2); one(comp(c, 0));",
        "color c = 1; float y = 1; if (u > 0.5) y = 2; setcomp(c, 0, y); one(comp(c, 0));",
        "float y = 1, z = u > 0.5 ? (y = 2) : 1; one(y);",
        "float y = 1; if (u > 0.5 && (y = 2) > 1) one(y);",
        "float w[2] = {1, 2}; set(w[0]); one(w[1]);",
        "float w[2] = {1, 2}; w[u] = 3; one(w[1]);",
        "float w[2] = {u, 2}; w[1] = 3; one(w[0]);",
        "float w = 1; void g() { extern float w; w = u; } g(); one(w);",
        "float w = 1; void g() { void h() { extern float w; set(w); } h(); } g(); one(w);",
        "float w = 1, z = 1; void g() { extern float w; fresnel(vector 1, normal 1, 2, w, z); }"
        "if (u > 0.5) g(); one(w);",
        "float w = 1; color c = trace(P, N, w); one(w);",
        "vector d = 1; float o = occlusion(P, N, 8, \"environmentdir\", d); one(xcomp(d));",
        "float o = 1; color c = indirectdiffuse(P, N, 8, \"axis\", 1, \"occlusion\", o); one(o);",
        "float w = 1; float known = surface(\"a\", w); one(w);",
    };
    for (const char* body : bodies) {
        const std::string source = "float one(uniform float x) { return x; }\n"
                                   "void set(output float x) { x = u; }\n"
                                   "void f() {\n" +
                                   std::string(body) + " }\nsurface a() { f(); }";
        EXPECT_EQ(CheckedShader(source).Reports(),
                  "4: ERROR: Detail mismatch for argument 0 of function 'one' during inlining")
            << body;
    }
    // A function and then the shader itself write a variable of the shader.
    EXPECT_EQ(CheckedShader("float one(uniform float x) { return x; }\n"
                            "surface a() { float y, z;\n"
                            "void g() { fresnel(vector 1, normal 1, 1.5, y, z); }\n"
                            "float h() { return one(y); }\n"
                            "g(); y = u; Ci = h(); }")
                  .Reports(),
              "4: ERROR: Detail mismatch for argument 0 of function 'one' during inlining");
}

TEST(SlcCheckInlineDetail, LimitsTheIterationsOfNestedLoops)
{
    std::string body;
    for (int i = 0; i < 40; ++i)
        body += "for (i = 0; i < 2; i += 1) { float y" + std::to_string(i) + " = 1; while (y" +
                std::to_string(i) + " < 3) { y" + std::to_string(i) + " += 1;\n";
    const std::string text =
        "void f() { float i; " + body + std::string(80, '}') + " }\nsurface a() { f(); }";
    EXPECT_NE(CheckedShader(text).Reports().find("Too many loops inside each other"),
              std::string::npos);
}

TEST(SlcCheckInlineDetail, EvaluatesEqualCallsOnce)
{
    // Each function calls the one before it twice, which is 2^60 evaluations if none are shared.
    std::string source = "float f0(float x) { return x; }\n";
    for (int i = 1; i <= 60; ++i) {
        const std::string call = "f" + std::to_string(i - 1) + "(x)";
        source +=
            "float f" + std::to_string(i) + "(float x) { return " + call + " + " + call + "; }\n";
    }
    EXPECT_EQ(CheckedShader(source + "surface a() { Ci = f60(u); }").Reports(), "");
}

TEST(SlcCheckInlineDetail, LimitsEvaluationsThatCannotBeShared)
{
    std::string function = "void f0(float x) { y += x; }";
    for (int i = 1; i <= 30; ++i) {
        const std::string call = " f" + std::to_string(i - 1) + "(x);";
        function = "void f" + std::to_string(i) + "(float x) {\n" + function + call + call + " }";
    }
    const std::string reports =
        CheckedShader("surface a() { float y = 1;\n" + function + " f30(u); }").Reports();
    EXPECT_NE(reports.find("' is too large"), std::string::npos) << reports;
}

TEST(SlcCheckInlineDetail, RefusesChainsOfCallsThatAreTooLong)
{
    const auto chain = [](int length) {
        std::string source = "float f0(float x) { return x; }\n";
        for (int i = 1; i <= length; ++i)
            source += "float f" + std::to_string(i) + "(float x) { return f" +
                      std::to_string(i - 1) + "(x); }\n";
        return source + "surface a() { Ci = f" + std::to_string(length) + "(u); }";
    };
    EXPECT_EQ(CheckedShader(chain(500)).Reports(), "");
    const std::string reports = CheckedShader(chain(20000)).Reports();
    EXPECT_NE(reports.find("' is too large"), std::string::npos) << reports;
    EXPECT_EQ(reports.find('\n'), std::string::npos) << reports;
}

TEST(SlcCheckDetail, WalksLongChains)
{
    std::string sum = "u";
    for (int i = 0; i < 9000; ++i)
        sum += i % 2 == 0 ? "\n+ 1" : "\n* v";
    EXPECT_EQ(CheckedShader("float f(float x) { return x + " + sum +
                            "; }\nsurface a() { Ci = " + sum + " + f(1); }")
                  .Reports(),
              "");
}

}  // namespace
