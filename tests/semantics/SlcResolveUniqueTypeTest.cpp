#include "semantics/SlcResolveUniqueType.h"

#include <gtest/gtest.h>

#include "semantics/TypedStatement.h"

namespace {

struct ReportCase {
    const char* statement;
    const char* reports;
};

template <std::size_t n>
void ExpectReports(const ReportCase (&cases)[n])
{
    for (const ReportCase& c : cases)
        EXPECT_EQ(TypedStatement(c.statement).Reports(), c.reports) << c.statement;
}

}  // namespace

TEST(SlcResolveUniqueType, PicksOneTypeForEachPart)
{
    struct Case {
        const char* statement;
        const char* text;
    };
    static const Case cases[] = {
        // from the target down
        {"c1 = (1, 2, 3);", "(#:float, #:float, #:float):color"},
        {"p1 = (1, 2, 3);", "(#:float, #:float, #:float):point"},
        {"v1 = (1, 2, 3);", "(#:float, #:float, #:float):point"},
        {"c1 = 1;", "#:float"},
        {"c1 = noise(p1);", "noise(p1:point):color"},
        {"f1 = noise(p1);", "noise(p1:point):float"},
        {"m1 = 2;", "#:float"},
        {"c1 = sqrt(2);", "sqrt(#:float):float"},  // not a color square root
        {"c1 = -sqrt(2);", "-sqrt(#:float):float:float"},
        {"c1 = f1 * 2;", "(f1:float * #:float):float"},
        {"c1 = texture(\"a\");", "texture():color"},
        {"p1 = texture(\"a\");", "texture():float"},
        {"c1 = c2 * texture(\"a\", f1, f2);",
         "(c2:color * texture(f1:float, f2:float):color):color"},
        // promotion on either side
        {"c1 = f1 * c2;", "(f1:float * c2:color):color"},
        {"c1 = c2 * noise(f1);", "(c2:color * noise(f1:float):color):color"},
        {"v1 = 2 * n1;", "(#:float * n1:normal):normal"},
        {"p1 = p2 + f1 * v1;", "(p2:point + (f1:float * v1:point):point):point"},
        {"m1 = m2 * 2;", "(m2:matrix * #:float):matrix"},
        // dot and cross products
        {"f1 = v1 . n1;", "(v1:point . n1:point):float"},
        {"f1 = normalize(n1) . (1, 2, 3);",
         "(normalize(n1:vector):point . (#:float, #:float, #:float):point):float"},
        {"f1 = c1 . (1, 2, 3);", "(c1:color . (#:float, #:float, #:float):color):float"},
        {"v1 = v2 ^ n1;", "(v2:vector ^ n1:normal):point"},
        // casts
        {"c1 = color (1, 2, 3);", "<color>(#:float, #:float, #:float):color:color"},
        {"c1 = color noise(p1);", "<color>noise(p1:point):color:color"},
        {"v1 = vector noise(p1);", "<vector>noise(p1:point):point:vector"},
        {"c1 = color (p1);", "<color>p1:point:color"},
        {"f1 = float noise(p1);", "<float>noise(p1:point):float:float"},
        {"p1 = point (f1 * 2);", "<point>(f1:float * #:float):float:point"},
        // choice
        {"c1 = f1 < 2 ? c2 : f2;", "(? c2:color f2:color):color"},
        {"c1 = f1 < 2 ? sqrt(f1) : c2;", "(? sqrt(f1:float):float c2:color):color"},
        {"c1 = f1 < 2 ? f1 : f2;", "(? f1:float f2:float):float"},
        // calls
        {"f1 = length(1);", "length(#:vector):float"},
        {"f1 = xcomp(p1 - p2);", "xcomp((p1:point - p2:point):point):float"},
        {"c1 = mix(f1, c2, 0.5);", "mix(f1:color, c2:color, #:float):color"},
        {"c1 = mix(sqrt(f1), c2, 0.5);", "mix(sqrt(f1:float):float, c2:color, #:float):color"},
        {"c1 = mix(-sqrt(f1), f1 < 1 ? f1 : f2, c2 . c1);",
         "mix(-sqrt(f1:float):float:float, (? f1:float f2:float):float, "
         "(c2:color . c1:color):float):float"},
        {"f1 = comp((1, 2, 3), 1);", "comp?((#:float, #:float, #:float):error, #:float):float"},
        {"printf(\"%f %c\", f1 * 2, noise(p1));",
         "printf(\"%f %c\":string, (f1:float * #:float):float, noise(p1:point):float):void"},
        {"f1 = attribute(\"a\", c1);", "attribute(\"a\":string, c1:color):float"},
        {"c1 = max(c2, 1, f1, (1, 2, 3));",
         "max(c2:color, #:color, f1:color, (#:float, #:float, #:float):color):color"},
        {"f1 = occlusion(p1, v1, 16, \"axis\", n1, \"bias\", 0.1);",
         "occlusion(p1:point, v1:vector, #:float, \"axis\":string, n1:vector, \"bias\":string, "
         "#:float):float"},
        {"f1 = filterstep(1, f1, \"filter\", s1, \"width\", noise(p1));",
         "filterstep(#:float, f1:float, \"filter\":string, s1:string, \"width\":string, "
         "noise(p1:point):float):float"},
        // the values of an assignment and of array elements
        {"c1 = f1 = 2;", "(f1 = #:float):float"},
        {"f1 = fa[ca[1] . c1];", "fa[(ca[#:float]:color . c1:color):float]:float"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TypedStatement(c.statement).ValueText(), c.text) << c.statement;
}

TEST(SlcResolveUniqueType, ReportsAssignments)
{
    static const ReportCase cases[] = {
        {"v1 = p1;", "WARNING: Type mismatch: assigned a 'point' to a 'vector'."},
        {"n1 = v1;", "WARNING: Type mismatch: assigned a 'vector' to a 'normal'."},
        {"v1 += p1; p1 -= v1;", ""},
        {"v1 = p1 - p2; p1 = p2 + v1; n1 = normalize(v1); v1 = normalize(n1);", ""},
        // a cross product takes the type that its context requires
        {"v1 = dPdu ^ dPdv; n1 = dPdu ^ dPdv; p1 = p2 + (v1 ^ v2) * 2;", ""},
        {"f1 = c1;", "ERROR: Type mismatch for assignment: f1"},
        {"fa[1] = s1;", "ERROR: Type mismatch for assignment: fa[...]"},
        {"s1 = f1 * 2;", "ERROR: Type mismatch for assignment: s1"},
        {"f1 = c1 + c2;", "ERROR: Type mismatch for assignment: f1"},
        {"s1 = sqrt(f1);", "ERROR: Type mismatch for assignment: s1"},
        {"c1 = m1 + m2;", "ERROR: Incompatible types for +"},
        {"c1 = (m1 + m2) * 2 + 1;", "ERROR: Incompatible types for +"},
    };
    ExpectReports(cases);
}

TEST(SlcResolveUniqueType, ReportsCastsAndLists)
{
    static const ReportCase cases[] = {
        {"f1 = float (p1);", "ERROR: Cannot cast a 'float' from a 'point'"},
        {"c1 = color (s1);", "ERROR: Cannot cast a 'color' from a 'string'"},
        {"m1 = matrix (noise(p1)); c1 = color (p1); p1 = point (c1); v1 = vector (n1);",
         "ERROR: Cannot convert an ambiguous typed expression by casting"},
        {"m1 = matrix (f1); p1 = point \"world\" (f1); n1 = normal \"world\" (v1);", ""},
        {"p1 = (c1, 1, s1);", "ERROR: Invalid type for coordinate 0 of a point; "
                              "ERROR: Invalid type for coordinate 2 of a point"},
        {"m1 = (1, 2, 3, c1, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, s1);",
         "ERROR: Invalid type for coordonnate 3 of a matrix; "
         "ERROR: Invalid type for coordonnate 15 of a matrix"},
        {"color x1[3] = {f1, c1, (1, 2, 3)}; vector x2[2] = {1, p1};", ""},
        {"float x1[3] = {1, c1, noise(p1)};",
         "ERROR: Type mismatch for expression 2 inside array initializer"},
        {"f1 = fa[c1];", "ERROR: Index of array reference must be a float"},
        {"fa[p1 - p2] = 1;", "ERROR: Index of array reference must be a float"},
    };
    ExpectReports(cases);
}

TEST(SlcResolveUniqueType, ReportsOperators)
{
    static const ReportCase cases[] = {
        {"p1 = p1 + p2;", "WARNING: Try to add two points, misuse of this operator"},
        {"p1 = p1 + 1;", "WARNING: Try to add a point and a float, misuse of this operator"},
        {"p1 = 1 + p1;", "WARNING: Try to add a float and a point, misuse of this operator"},
        {"p1 = p1 + v1; p1 = v1 + p1; v1 = v1 + 1; p1 = p1 * 2;", ""},
        {"f1 = s1 + 1;", "ERROR: Invalid type for left expression of a +"},
        {"f1 = 1 * s1;", "ERROR: Invalid type for right expression of a *"},
        {"c1 = c1 - p1;", "ERROR: Incompatible types for -"},
        {"v1 = p1 ^ p2;",
         "WARNING: A cross product is weel defined for vectors or normals, not points"},
        {"v1 = f1 ^ v2;", "ERROR: Invalid type for left expression of a cross product"},
        {"v1 = v2 ^ c1;", "ERROR: Invalid cross product"},
        {"f1 = p1 . p2;",
         "WARNING: Try to perform a dot product of two points, misuse of this operator"},
        {"f1 = f1 . v2;", "ERROR: Invalid type for left expression of dot product"},
        {"f1 = c1 . 2;", "ERROR: Invalid type for right expression of dot product"},
        {"f1 = c1 . v1;", "ERROR: Incompatible types for a dot product"},
        {"m1 = -m2;", "ERROR: Invalid type for the expression of a unary minus"},
        {"c1 = f1 < 1 ? c2 : s1;",
         "ERROR: Type mismatch for resulting expressions of operator '? :'"},
        {"if (c1 < 1) f1 = 1;", "ERROR: Invalid type for left expression of '<'."},
        {"if (1 >= s1) f1 = 1;", "ERROR: Invalid type for right expression of '>='."},
        {"if (f1 == 1 && s1 != s2 || c1 == 1 && !(0 == p1) || m1 == m2) f1 = 1;", ""},
        {"if (c1 == (1, 2, 3) && noise(p1) > 1) f1 = 1;", ""},
        {"if ((1, 2, 3) == 1) f1 = 1;", "ERROR: Ambiguous type for left expression of =="},
        {"if (1 != (1, 2, 3)) f1 = 1;", "ERROR: Ambiguous type for right expression of !="},
        {"if (fa == 1) f1 = 1;", "ERROR: Invalid type for left expression of =="},
        {"if (1 == fa) f1 = 1;", "ERROR: Invalid type for right expression of =="},
        {"if (s1 != 1) f1 = 1;", "ERROR: Incompatible types for !="},
        {"if (c1 == p1) f1 = 1;", "ERROR: Incompatible types for =="},
    };
    ExpectReports(cases);
}

TEST(SlcResolveUniqueType, WarnsOfNoiseThatIsMultipliedByComponents)
{
    const std::string warning = "1: WARNING: A point-valued 'noise' is multiplied component by "
                                "component: write 'float noise(...)' for the number";
    for (const char* product :
         {"noise(P) * N", "N * (2 * noise(P) - 1)", "-noise(P) * N", "noise(s, t) * noise(P)"})
        EXPECT_EQ(CheckedShader("displacement d() { P += " + std::string(product) + "; }", {}, 2)
                      .Reports(),
                  warning)
            << product;
    for (const char* product : {"float noise(P) * N", "vector noise(P) * N", "2 * noise(P)"})
        EXPECT_EQ(CheckedShader("displacement d() { P += " + std::string(product) + "; }", {}, 2)
                      .Reports(),
                  "")
            << product;
    EXPECT_EQ(CheckedShader("displacement d() { P += noise(P) * N; }").Reports(), "");
}

TEST(SlcResolveUniqueType, ReportsCalls)
{
    static const ReportCase cases[] = {
        {"f1 = comp((1, 2, 3), 1);", "ERROR: Ambiguous type for argument 1 of 'comp'"},
        {"f1 = filterstep(1, f2, c1, 3);",
         "ERROR: Argument 3 to filterstep(...) must be a string."},
        {"f1 = filterstep(1, f2, 2, 3);", "ERROR: Argument 4 to filterstep(...) must be a string."},
        {"f1 = filterstep(1, f2, f1) + filterstep(1, f2, noise(p1), \"width\", 2);", ""},
        {"f1 = filterstep(1, f2, \"width\", 2, s1);",
         "ERROR: No value provided for parameter s1 in filterstep(...)."},
        {"f1 = filterstep(1, f2, \"filter\");",
         "ERROR: No value provided for parameter \"filter\" in filterstep(...)."},
        {"f1 = filterstep(1, f2, \"filter\", 2);",
         "ERROR: The value associated to the \"filter\" parameter must be a string (in the call "
         "of 'filterstep')."},
        {"f1 = filterstep(1, f2, \"width\", c1);",
         "ERROR: The value associated to the \"width\" parameter must be a float (in the call of "
         "'filterstep')."},
        {"f1 = filterstep(1, f2, \"sharp\", 2, s1, c1);",
         "WARNING: Unknown parameter \"sharp\" to filterstep(...), ignored."},
    };
    ExpectReports(cases);
}

TEST(SlcResolveUniqueType, AllowsBuiltInsOnlyInTheirShaders)
{
    struct Case {
        const char* call;
        std::string legal;  // first letters of the kinds of shader
    };
    static const Case cases[] = {
        {"ambient()", "s"},
        {"diffuse(n1)", "s"},
        {"specular(n1, v1, 0.1)", "s"},
        {"specularstd(n1, v1, 0.1)", "s"},
        {"phong(n1, v1, 10)", "s"},
        {"trace(p1, v1)", "sld"},
        {"incident(\"a\", f1)", "slvd"},
        {"opposite(\"a\", f1)", "slvd"},
        {"sqrt(2)", "slvdi"},
    };
    for (const Case& c : cases) {
        for (const char* kind : {"surface", "light", "volume", "displacement", "imager"}) {
            const std::string call(c.call);
            const std::string name = call.substr(0, call.find('('));
            const bool isLegal = c.legal.find(kind[0]) != std::string::npos;
            EXPECT_EQ(TypedStatement("c1 = " + call + ";", kind).Reports(),
                      isLegal
                          ? ""
                          : "ERROR: Function '" + name + "' is unavailable in " + kind + " shader")
                << kind;
        }
    }
    EXPECT_EQ(TypedStatement("v1 = faceforward(v1, v1, v1); v1 = faceforward(v1, v1);", "imager")
                  .Reports(),
              "ERROR: Function 'faceforward' is unavailable in imager shader");
    // A report about an argument precedes those about the call.
    EXPECT_EQ(TypedStatement("c1 = diffuse((1, 2, 3));", "light",
                             "color diffuse(color c) { return c; } "
                             "color diffuse(point p) { return comp(p, 0); }")
                  .Reports(),
              "ERROR: Ambiguous type for argument 1 of 'diffuse'; "
              "ERROR: Function 'diffuse' is unavailable in light shader");
    const CheckedShader function("color f(normal n) { return diffuse(n); }\nlight test() {}");
    EXPECT_EQ(function.Reports(), "1: ERROR: Function 'diffuse' is unavailable in light shader");
    EXPECT_EQ(TypedStatement("c1 = ambient();", "light", "color ambient() { return 1; }").Reports(),
              "");
}

TEST(SlcResolveUniqueType, ChecksTextureAccess)
{
    static const ReportCase cases[] = {
        {"c1 = texture(\"a\"); c1 = texture(s1[0], f1, f2);", ""},
        {"c1 = texture(\"a\", f1, f2, f1, f2, f1, f2, f1, f2, \"blur\", 1, \"filter\", s1);", ""},
        {"c1 = texture(\"a\", \"blur\", 1, s1, f1);", ""},
        {"f1 = texture(\"a\"[2], f1, f2, \"width\", noise(p1), \"fill\", 1, \"lerp\", 1);", ""},
        {"c1 = texture(f1, f1, f2);", "ERROR: First argument to texture(...) must be a string"},
        {"c1 = environment(f1, v1);", "ERROR: First argument to enviroment(...) must be a string"},
        {"f1 = shadow(f1, p1);", "ERROR: First argument to shadow(...) must be a string"},
        {"c1 = texture(\"a\"[c1]);", "ERROR: Texture channel must be a float"},
        {"c1 = texture(\"a\", f1);", "ERROR: Invalid number of arguments for texture(...)"},
        {"c1 = texture(\"a\", c1, f1);", "ERROR: Texture coordinate must be a float"},
        {"c1 = texture(\"a\", f1, f2, 1, 2);",
         "ERROR: String expected as a texture access parameter to texture(...), argument 4"},
        {"c1 = environment(\"a\");", "ERROR: environment(...) needs at least two arguments"},
        {"f1 = shadow(\"a\");", "ERROR: shadow(...) needs at least two arguments"},
        {"c1 = environment(\"a\", 1);",
         "ERROR: Second argument to environment(...) must be a point"},
        {"f1 = shadow(\"a\", \"bias\", 1);",
         "ERROR: Second argument to shadow(...) must be a point"},
        {"c1 = environment(\"a\", v1, v2, v1, v2, \"blur\", 1);", ""},
        {"c1 = environment(\"a\", v1, v2);",
         "ERROR: Argument missing for a name-value in texture(...)"},
        {"c1 = texture(\"a\", \"blur\");",
         "ERROR: Argument missing for a name-value pair in texture(...)"},
        {"f1 = shadow(\"a\", p1, \"bias\");",
         "ERROR: Argument missing for a name-value pair in shadow(...)"},
        {"f1 = shadow(\"a\", p1, \"bias\", 0.1, \"gapbias\", f1, \"source\", p1, p2, p1, \"blur\", "
         "1);",
         ""},
        {"f1 = shadow(\"a\", p1, \"source\", p1, \"blur\", 1);",
         "ERROR: \"source\" argument in shadow(...) needs 2, 3 or 4 points."},
        {"f1 = shadow(\"a\", p1, \"source\", 1, \"blur\", 1);",
         "ERROR: \"source\" argument in shadow(...) needs 2, 3 or 4 points."},
        {"c1 = texture(\"a\", \"bias\", 0.1);",
         "WARNING: Unknown argument \"bias\" to texture(...), ignored."},
        {"f1 = shadow(\"a\", p1, \"fill\", 1, \"colour\", c1);",
         "WARNING: Unknown argument \"fill\" to shadow(...), ignored.; "
         "WARNING: Unknown argument \"colour\" to shadow(...), ignored."},
        {"c1 = texture(\"a\", \"blur\", c1);",
         "ERROR: Scalar value expected for \"blur\"parameter in texture(...)"},
        {"c1 = environment(\"a\", v1, \"filter\", 2);",
         "ERROR: String value expected for 'filter' parameter in environment(...)"},
    };
    ExpectReports(cases);
}

TEST(SlcResolveUniqueType, TypesLongAndNestedExpressionsInLinearTime)
{
    std::string chain = "f1";
    for (int i = 0; i < 9000; ++i)
        chain += "\n+ f2";
    EXPECT_EQ(TypedStatement("f1 = " + chain + ";").Reports(), "");

    // Each call has three possible types: trying all 3^200 combinations would never end.
    std::string nested = "p1";
    for (int i = 0; i < 200; ++i)
        nested = "noise(point\n" + nested + ")";
    EXPECT_EQ(TypedStatement("c1 = " + nested + ";").Reports(), "");
    std::string minus = "f1";
    for (int i = 0; i < 1000; ++i)
        minus = "-(\n" + minus + ")";
    EXPECT_EQ(TypedStatement("f1 = " + minus + ";").Reports(), "");
}
