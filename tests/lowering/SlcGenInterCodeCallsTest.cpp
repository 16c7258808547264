#include <gtest/gtest.h>

#include <string>

#include "lowering/LowerTestHelp.h"
#include "lowering/SlcGenInterCode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

struct CallCase {
    const char* functions;
    const char* body;  // of a displacement shader
    const char* code;
};

std::string ShaderOf(const CallCase& c)
{
    return std::string(c.functions) + " displacement t() {" + c.body + "}";
}

template <std::size_t N>
void ExpectCalls(const CallCase (&cases)[N], const SlcOptionsControl& options = PlainOptions())
{
    for (const CallCase& c : cases)
        EXPECT_EQ(LowerShader(ShaderOf(c), options), c.code) << ShaderOf(c);
}

TEST(SlcGenCalls, ExpandAFunctionAtEachCall)
{
    static const CallCase cases[] = {
        {"float f(float a) { return a * 2; }", "float x = f(u) + f(v);",
         "{ t0 = u * 2; } { t1 = v * 2; } { t2 = t0 + t1; } { x_1 = t2; }"},
        {"float f(float a) { float b = a; b += 1; return b; }", "float x = f(f(u));",
         "{ b_3 = u; } { b_3 = b_3 + 1; } { b_5 = b_3; } { b_5 = b_5 + 1; } { x_1 = b_5; }"},
        {"void f() { } float g() { f(); return 1; }", "f(); float x = g();", "{ x_4 = 1; }"},
        // A returned value of another type is converted to the function's type. A function without
        // a `return` returns 0.
        {"color f() { return 1; }", "uniform float x = f() . f();",
         "t0 = 1; t1 = 1; t2 = t0 . t1; x_1 = t2;"},
        {"float f() { return 1; }", "uniform color x = f();", "x_1 = 1;"},
        {"float f() { }", "color x = f();", "t0 = 0; { x_1 = t0; }"},
        // Variables with the same name are distinct.
        {"float f(float a) { float b = a; return b; }", "float x = f(u); float b = x;",
         "{ b_3 = u; } { x_1 = b_3; } { b_4 = x_1; }"},
    };
    ExpectCalls(cases);
}

TEST(SlcGenCalls, BindFormalsToTheirArguments)
{
    static const CallCase cases[] = {
        {"void f(float a; output float b) { b = a; }", "float x; f(u, x);", "{ x_1 = u; }"},
        {"float f(float a) { return a; }", "uniform float x = f(2);", "t0 = 2; x_1 = t0;"},
        {"float f(varying float a) { return a; }", "float x = f(2);", "{ t0 = 2; } { x_1 = t0; }"},
        // An argument of another type is copied; points, vectors and normals count as one type.
        {"color f(color a) { return a; }", "color x = f(u); x = f((1, 0, 0));",
         "{ t0 = u; } { x_1 = t0; } t1 = point(1, 0, 0); t2 = t1; { x_1 = t2; }"},
        {"float f(vector a) { return a . a; }", "float x = f(N);", "{ t0 = N . N; } { x_1 = t0; }"},
        // An array without a length takes the length of its argument.
        {"float f(float a[]) { return a[1]; }", "float x[2]; float y = f(x);",
         "t0 = &x_1[1]; { y_1 = t0; }"},
        // An argument keeps the value that it had when it was read.
        {"float f(float a; float b) { return a + b; }", "float x; float y = f(x, x = 2);",
         "{ t0 = x_1; } { x_1 = 2; } { t1 = t0 + x_1; } { y_1 = t1; }"},
        // The element that is bound to `a` is written through another reference in a later
        // statement.
        {"",
         "float x[2]; float f(float a) { float y = 1; return a + (x[1] = 5); } float z = f(x[1]);",
         "t0 = &x_1[1]; { y_3 = 1; } { t1 = t0; } t2 = &x_1[1]; { t2 = 5; } { t3 = t1 + t2; } { "
         "z_1 = t3; }"},
    };
    ExpectCalls(cases);
}

TEST(SlcGenCalls, WriteThroughOutputFormals)
{
    static const CallCase cases[] = {
        {"void f(output float a) { a = 1; }", "float x[3]; f(x[1]);", "t0 = &x_1[1]; { t0 = 1; }"},
        {"void f(output float a) { a = 1; }", "float x[3]; f(x[v]);",
         "{ t0 = &x_1[v]; t1 = t0; } { t1 = 1; } { t2 = &x_1[v]; t2 = t1; }"},
        {"void f(output float a[]) { a[0] = 1; }", "float x[3]; f(x);",
         "t0 = &x_1[0]; { t0 = 1; }"},
    };
    ExpectCalls(cases);
    EXPECT_EQ(LowerShader("void f(output point a) { a = N; } void g(output point a) { f(a); } "
                          "surface t() { g(P); }"),
              "{ Ci = color(0, 0, 0); } { Oi = color(1, 1, 1); } { P = N; } forget_lights();");
}

TEST(SlcGenCalls, AccessVariablesOfEnclosingScopes)
{
    static const CallCase cases[] = {
        {"", "float x = u; float f() { extern float x; x += 1; return x; } float y = f() + f();",
         "{ x_1 = u; } { x_1 = x_1 + 1; } { t0 = x_1; } { x_1 = x_1 + 1; } { t1 = t0 + x_1; } { "
         "y_1 = t1; }"},
        {"float f(float x) { float g(float y) { extern float x; return x + y; } "
         "return g(x) * g(1); }",
         "float y = f(u);",
         "{ t0 = u + u; } t1 = 1; { t2 = u + t1; } { t3 = t0 * t2; } { y_1 = t3; }"},
    };
    ExpectCalls(cases);
}

TEST(SlcGenCalls, KeepTheTemporariesOfTheEnclosingExpression)
{
    static const CallCase cases[] = {
        // The statements of the body release their temporaries, but not that of the product before
        // the call.
        {"float f(float a) { float b = a + 1; b = b * b + a; return b * 2; }",
         "float x; x = u * v + x; float y = u * v + f(u);",
         "{ t0 = u * v; } { t1 = t0 + x_1; } { x_1 = t1; } { t1 = u * v; } { t0 = u + 1; } { b_3 = "
         "t0; } { t0 = b_3 * b_3; } { t2 = t0 + u; } { b_3 = t2; } { t2 = b_3 * 2; } { t0 = t1 + "
         "t2; } { y_1 = t0; }"},
        // A result that the body leaves in a temporary stays in use.
        {"float f(float a) { float b = a; return a * 2; }",
         "float x; x = u * v + x; x = f(u) + u * v;",
         "{ t0 = u * v; } { t1 = t0 + x_1; } { x_1 = t1; } { b_3 = u; } { t1 = u * 2; } { t0 = u * "
         "v; } { t2 = t1 + t0; } { x_1 = t2; }"},
    };
    SlcOptionsControl options = PlainOptions();
    options.m_reuseTempVars = true;
    ExpectCalls(cases, options);
}

/// Returns a shader with n functions, each of which, after the first, calls the previous one
/// `calls` times.
std::string Chain(int n, int calls)
{
    std::string functions = "float f0(float x) { return x + 1; } ";
    for (int i = 1; i < n; ++i) {
        const std::string call = "f" + std::to_string(i - 1) + "(x)";
        functions += "float f" + std::to_string(i) + "(float x) { return " + call;
        for (int j = 1; j < calls; ++j)
            functions += " + " + call;
        functions += "; } ";
    }
    return functions + "displacement t() { float x = f" + std::to_string(n - 1) + "(u); }";
}

TEST(SlcGenCalls, RefuseAnExpansionThatGrowsTooLarge)
{
    SlcOptionsControl options = PlainOptions();
    options.m_mostOperations = 1000;
    EXPECT_EQ(RefusalOf(Chain(30, 2), options),
              "test.sl:1: ERROR: Expansion of function 'f29' is too large\n");
    EXPECT_EQ(RefusalOf(Chain(200, 3)),
              "test.sl:1: ERROR: Expansion of function 'f199' is too large\n")
        << "the count of operations has no room for them";
    // Calls of functions without instructions also count: 14 calls and the one in the shader.
    const std::string empty = "void f0() { } void f1() { f0(); f0(); } void f2() { f1(); f1(); } "
                              "void f3() { f2(); f2(); } displacement t() { f3(); }";
    options.m_mostOperations = 15;
    EXPECT_NE(LowerShader(empty, options), "refused");
    options.m_mostOperations = 14;
    EXPECT_EQ(RefusalOf(empty, options),
              "test.sl:1: ERROR: Expansion of function 'f3' is too large\n");
}

TEST(SlcGenCalls, RefuseArraysOfAnotherLength)
{
    struct Case {
        const char* functions;
        const char* statement;
        const char* reports;
    };
    static const Case cases[] = {
        {"float g(float b[3]) { return b[2]; } float f(float a[]) { return g(a); }", "f(two);",
         "Array of length 2 for argument 1 of 'g' function (length 3 expected)"},
        {"void g(float x; output float b[3]) { } void f(output float a[]) { g(1, a); }", "f(two);",
         "Array of length 2 for argument 2 of 'g' function (length 3 expected)"},
        {"float[3.0] f(float a[]) { return a; }", "float[] x = f(two);",
         "Array of length 2 for the result of 'f' function (length 3 expected)"},
        {"float[] f(float a[]) { return a; }", "float[3.0] x = f(two);",
         "Array of length 2 for the result of 'f' function (length 3 expected)"},
        {"float[] f(float a[]) { if (u > 0) return a; }", "float[3.0] x = f(two);",
         "Array of length 2 for the result of 'f' function (length 3 expected)"},
        {"float[] f(float a[]) { if (u > 0) return a; }", "f(two);",
         "The length of the result of 'f' function is unknown"},
        {"float[3.0] f(float a[]) { return a; } float g(float a[]) { return a[0]; }", "g(f(two));",
         "Array of length 2 for the result of 'f' function (length 3 expected)"},
        {"float[3.0] f(float a[]) { if (u > 0) return a; } float g(float a[]) { return a[0]; }",
         "g(f(two));", "Array of length 2 for the result of 'f' function (length 3 expected)"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(RefusalOf(std::string(c.functions) +
                                " displacement t() { float two[2] = {1, 2}; " + c.statement + " }",
                            PlainOptions()),
                  "test.sl:1: ERROR: " + std::string(c.reports) + "\n");
}

TEST(SlcGenCalls, RefuseAnExpansionThatNestsTooDeep)
{
    SlcOptionsControl options = PlainOptions();
    options.m_mostLevels = 100;
    EXPECT_NE(LowerShader(Chain(100, 1), options), "refused");
    EXPECT_EQ(RefusalOf(Chain(101, 1), options),
              "test.sl:1: ERROR: Expansion of function 'f0' is too large\n");
}

TEST(SlcGenCalls, NestTenThousandLevels)
{
    EXPECT_NE(LowerShader(Chain(10000, 1)), "refused");
}

/// Builds calls of shadeops by hand, since there is no library.
class ShadeopTest : public testing::Test {
protected:
    /// Returns the code of the call `mix(variables)`, where each formal has the type `formal`, and
    /// the result is a float of the given detail.
    std::string Lower(SlcTypeNode* formal, const std::vector<SlcPtr<SlcVarSymbolEntry>>& variables,
                      SlcDetailNode* detail)
    {
        auto arguments = std::make_unique<SlcProcArgsNode>(SlcPosition{});
        for (const auto& variable : variables) {
            auto argument = std::make_unique<SlcIdentExprNode>(SlcPosition{}, variable->GetIdent());
            argument->SetSymbolEntry(variable);
            arguments->AddArg(std::move(argument));
        }
        SlcProcCallExprNode call({}, SlcLexicalNode::CreateIdent("mix"), std::move(arguments));
        call.SetSymbolEntry(MakeEntry(formal, variables.size()));
        auto types = MakeShared<SlcPossibleTypes>(std::vector{SlcTypeNode::AFloat()});
        types->SetUniqueType(SlcTypeNode::AFloat());
        types->SetDetail(detail);
        call.SetAnnotation(types);
        SlcOptionsControl options = PlainOptions();
        SlcGenInterCode generator(MakeShared<SlcSemanticError>(), options);
        SlcDisplacementShaderTypeNode kind;
        return ToText(*generator.GenCode(&call, &kind, false, false));
    }

    static SlcPtr<SlcVarSymbolEntry> Variable(const char* name, SlcTypeNode* type,
                                              SlcDetailNode* detail)
    {
        auto variable =
            MakeShared<SlcVarSymbolEntry>(SlcLexicalNode::CreateIdent(name), type, detail,
                                          SlcStorageSpecNode::ALocal(), false, nullptr);
        variable->MakeIntCodeVar(name);
        return variable;
    }

private:
    static SlcPtr<SlcFuncSymbolEntry> MakeEntry(SlcTypeNode* formal, std::size_t count)
    {
        SlcFuncSignature signature;
        signature.ident = SlcLexicalNode::CreateIdent("mix");
        signature.returnType = SlcTypeNode::AFloat();
        signature.argTypes.assign(count, formal);
        signature.argDetails.assign(count, SlcDetailNode::AVarying());
        signature.argStorages.assign(count, SlcStorageSpecNode::AInput());
        signature.origin = SlcFuncOrigin::Shadeop;
        SlcShadeopInfo info;
        info.methodName = signature.ident;
        info.key = "lib_so";
        return MakeShared<SlcFuncDSOSymbolEntry>(signature, info);
    }
};

TEST_F(ShadeopTest, IsCalledInABlockOfItsDetail)
{
    const auto x = Variable("x", SlcTypeNode::AFloat(), SlcDetailNode::AVarying());
    const auto k = Variable("k", SlcTypeNode::AFloat(), SlcDetailNode::AUniform());
    EXPECT_EQ(Lower(SlcTypeNode::AFloat(), {x, k}, SlcDetailNode::AVarying()),
              "{ t0 = shadeop(\"lib_so\", \"mix\", x, k); }");
    EXPECT_EQ(Lower(SlcTypeNode::AFloat(), {k}, SlcDetailNode::AUniform()),
              "t0 = shadeop(\"lib_so\", \"mix\", k);");
    EXPECT_EQ(Lower(SlcTypeNode::AColor(), {x}, SlcDetailNode::AVarying()),
              "{ t0 = x; } { t1 = shadeop(\"lib_so\", \"mix\", t0); }");
}

TEST_F(ShadeopTest, ConvertsEachVaryingArrayOnce)
{
    SlcTypeNode* type = SlcTypeNode::CreateArrayType(SlcTypeNode::AFloat(), 2);
    const auto a = Variable("a", type, SlcDetailNode::AVarying());
    const auto b = Variable("b", type, SlcDetailNode::AVarying());
    const auto k = Variable("k", type, SlcDetailNode::AUniform());
    EXPECT_EQ(Lower(SlcTypeNode::CreateArrayType(SlcTypeNode::AFloat()), {a, b, a, k},
                    SlcDetailNode::AVarying()),
              "t0 = to_shadeop(a); t1 = to_shadeop(b); { t2 = shadeop(\"lib_so\", \"mix\", t0, t1, "
              "t0, k); } a = from_shadeop(t0); b = from_shadeop(t1);");
}

}  // namespace
