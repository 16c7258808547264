#include <gtest/gtest.h>

#include <string>

#include "helpers/CheckedShader.h"

namespace {

TEST(SlcCheckLightStatements, AreLegalByKindOfShader)
{
    struct Statement {
        const char* text;
        const char* illegal;
        const char* legalIn;  // kinds of shader
    };
    static const Statement statements[] = {
        {"illuminance(P) {}", "'Illuminance' statement cannot be used here", "surface volume"},
        {"illuminate(P) {}", "'Illuminate' statement cannot be used in this shader", "light"},
        {"solar() {}", "'Solar' statement cannot be used in this shader", "light"},
    };
    for (const char* kind : {"surface", "volume", "light", "displacement", "imager"}) {
        for (const Statement& statement : statements) {
            const std::string head(kind);
            const bool legal = std::string(statement.legalIn).find(head) != std::string::npos;
            const std::string body = std::string("{ ") + statement.text + " }";
            EXPECT_EQ(CheckedShader(head + " a() " + body).Reports(),
                      legal ? "" : std::string("1: ERROR: ") + statement.illegal)
                << head << ' ' << statement.text;
            // In a function that is not called, each of these statements is legal.
            EXPECT_EQ(CheckedShader("void f(point P) " + body + head + " a() {}").Reports(), "")
                << head << ' ' << statement.text;
        }
    }
}

TEST(SlcCheckLightStatements, CannotBeNested)
{
    EXPECT_EQ(
        CheckedShader("surface a() { illuminance(P) { illuminance(P) { Ci = Cl; } } }").Reports(),
        "1: ERROR: 'Illuminance' statements cannot be nested");
    EXPECT_EQ(CheckedShader("light a() { solar() { illuminate(Ps) { Cl = 1; } } }").Reports(),
              "1: ERROR: 'Solar' and 'illuminate' statements cannot be nested");
    EXPECT_EQ(
        CheckedShader("light a() { illuminate(Ps) { Cl = 1; } solar() { Cl = 1; } }").Reports(),
        "");
}

TEST(SlcCheckLightStatements, CheckTheTypesOfArguments)
{
    struct Case {
        const char* kind;
        const char* statement;
        const char* argument;  // at fault; null: none
        const char* name;
    };
    static const Case cases[] = {
        {"surface", "illuminance(P, N, 1)", nullptr, ""},
        {"surface", "illuminance(1, 2, 3)", nullptr, ""},
        {"surface", "illuminance((0, 0, 0), (0, 0, 1), 1)", nullptr, ""},
        {"surface", "illuminance(P, N, (0, 0, 1))", "angle", "illuminance"},
        {"surface", "illuminance(\"a\")", "position", "illuminance"},
        {"surface", "illuminance(P, Cs, 1)", "axis", "illuminance"},
        {"surface", "illuminance(P, N, P)", "angle", "illuminance"},
        {"light", "illuminate(Cl)", "position", "illuminate"},
        {"light", "illuminate(P, \"a\", 1)", "axis", "illuminate"},
        {"light", "illuminate(P, N, \"a\")", "angle", "illuminate"},
        {"light", "solar(Cl, 1)", "axis", "solar"},
        {"light", "solar(N, Cl)", "angle", "solar"},
        {"light", "solar(N, 0)", nullptr, ""},
        {"light", "illuminate((0, 0, 0), (0, 0, 1), 1)", nullptr, ""},
        {"light", "solar((0, 0, 1), 0)", nullptr, ""},
    };
    for (const Case& c : cases) {
        const CheckedShader shader(std::string(c.kind) + " a() { " + c.statement + " {} }");
        EXPECT_EQ(shader.Reports(), c.argument ? std::string("1: ERROR: Type mismatch for '") +
                                                     c.argument + "' expression in '" + c.name +
                                                     "' statement"
                                               : "")
            << c.statement;
    }
}

TEST(SlcCheckLightStatements, DeclareTheLightOnlyInside)
{
    EXPECT_EQ(CheckedShader("surface a() { illuminance(P) { Ci += Cl * length(L); Oi = Ol; } }")
                  .Reports(),
              "");
    EXPECT_EQ(CheckedShader("surface a() { illuminance(P) { Ci = Cl; }\nCi = Cl; }").Reports(),
              "2: ERROR: Undefined variable: Cl");
    EXPECT_EQ(CheckedShader("light a() { solar() { float x = 1; Cl = x; }\nCl = x; }").Reports(),
              "2: ERROR: Undefined variable: x");
}

}  // namespace
