// Checks the trees that the parser builds, and the places of their nodes.

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <string>

#include "frontend/SlcParseCode.h"
#include "frontend/TreeText.h"
#include "helpers/ParsedSource.h"

namespace {

struct ShapeCase {
    const char* source;
    const char* tree;
};

std::string TreeOf(const std::string& source)
{
    const ParsedSource parsed(source, 0);
    return parsed.Root() ? TreeText()(parsed.Root()) : parsed.Reports();
}

const std::string k_before = "(surface s () ({}";

/// Returns the trees of the statements of a body; the reports if the parser refuses it.
std::string BodyOf(const std::string& statements)
{
    const std::string tree = TreeOf("surface s() { " + statements + " }");
    if (!tree.starts_with(k_before))
        return tree;
    const std::string body = tree.substr(k_before.size(), tree.size() - k_before.size() - 2);
    return body.empty() ? body : body.substr(1);
}

}  // namespace

TEST(SlcParser, BindsOperatorsByPrecedence)
{
    static const ShapeCase cases[] = {
        {"x = a + b * c;", "(= x (+ a (* b c)))"},
        {"x = a - b - c;", "(= x (- (- a b) c))"},
        {"x = a / b * c;", "(= x (* (/ a b) c))"},
        {"x = a * b . c;", "(= x (* a (. b c)))"},
        {"x = a ^ b * c;", "(= x (^ a (* b c)))"},
        {"x = a + b ^ c;", "(= x (+ a (^ b c)))"},
        {"x = -a . b;", "(= x (. (- a) b))"},
        {"x = - -a;", "(= x (- (- a)))"},
        {"x = (a + b) * c;", "(= x (* (+ a b) c))"},
        {"x = y = z;", "(= x (= y z))"},
        {"x += a; x -= a; x *= a; x /= a;", "(+= x a) (-= x a) (*= x a) (/= x a)"},
        {"x = a < b ? 1 : c > d ? 2 : 3;", "(= x (?: (< a b) 1 (?: (> c d) 2 3)))"},
        {"x = a + b == c ? 1 : 2;", "(= x (?: (== (+ a b) c) 1 2))"},
        {"if (a < b || c >= d && e != f) ;", "(if-then (|| (< a b) (&& (>= c d) (!= e f))) ({}))"},
        {"if (!a <= b) ;", "(if-then (! (<= a b)) ({}))"},
        {"if (!(a < b) && (c > d)) ;", "(if-then (&& (! (< a b)) (> c d)) ({}))"},
        {"if a < 1 x = 1;", "(if-then (< a 1) (= x 1))"},
    };
    for (const ShapeCase& c : cases)
        EXPECT_EQ(BodyOf(c.source), c.tree) << c.source;
}

TEST(SlcParser, BuildsExpressions)
{
    static const ShapeCase cases[] = {
        {"x = 3;", "(= x 3)"},
        {"x = \"a\\\"b\";", "(= x \"a\\\"b\")"},
        {"x = a[i + 1];", "(= x ([] (+ i 1) a))"},
        {"x[2] = 1;", "(= ([] x 2) 1)"},
        {"x = (1, 2, 3);", "(= x (triple 1 2 3))"},
        {"x = (1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16);",
         "(= x (matrix 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16))"},
        {"x = f() + g(1, y = 2);", "(= x (+ (call f) (call g 1 (= y 2))))"},
        {"f(1);", "(call f 1)"},
        // a cast binds like a sign; if its type has spaces, there is a default one
        {"x = color 1 + y;", "(= x (+ (cast color \"rgb\" 1) y))"},
        {"x = color \"hsv\" (1, 2, 3);", "(= x (cast color \"hsv\" (triple 1 2 3)))"},
        {"x = point y;", "(= x (cast point \"current\" y))"},
        {"x = vector -y;", "(= x (cast vector \"current\" (- y)))"},
        {"x = normal \"world\" y;", "(= x (cast normal \"world\" y))"},
        {"x = matrix \"shader\" 1;", "(= x (cast matrix \"shader\" 1))"},
        {"x = float noise(y);", "(= x (cast float (call noise y)))"},
        {"x = color (point (y));", "(= x (cast color \"rgb\" (cast point \"current\" y)))"},
        {"x = texture(n);", "(= x (texture n 0))"},
        {"x = texture(\"a.tx\", s, t);", "(= x (texture \"a.tx\" 0 s t))"},
        {"x = environment(n[2], R);", "(= x (environment n 2 R))"},
        {"x = shadow(n[1][2], P, \"width\", 2);", "(= x (shadow ([] 1 n) 2 P \"width\" 2))"},
    };
    for (const ShapeCase& c : cases)
        EXPECT_EQ(BodyOf(c.source), c.tree) << c.source;
}

TEST(SlcParser, BuildsStatements)
{
    static const ShapeCase cases[] = {
        {"", ""},
        {";{}{;}", "({}) ({}) ({} ({}))"},
        {"if (a < b) if (c < d) x = 1; else x = 2;",
         "(if-then (< a b) (if-then-else (< c d) (= x 1) (= x 2)))"},
        {"while (a < b) { a += 1; }", "(while (< a b) ({} (+= a 1)))"},
        {"for (i = 0; i < 3; i += 1) f();", "(for (= i 0) (< i 3) (+= i 1) (call f))"},
        {"for (i; i < 3; i) break;", "(for i (< i 3) i (break 1))"},
        {"break 2; continue; continue 3;", "(break 2) (continue 1) (continue 3)"},
        {"return x;", "(return x)"},
        {"solar() ; solar(A, x) ;", "(solar ({})) (solar A x ({}))"},
        {"illuminate(P) ; illuminate(P, N, x) ;", "(illuminate P ({})) (illuminate P N x ({}))"},
        {"illuminance(P) ; illuminance(P, N, x) ;",
         "(illuminance P ({})) (illuminance P N x ({}))"},
        // a light category is ignored
        {"illuminance(\"c\", P) ; illuminance(\"c\", P, N, x) ;",
         "(illuminance P ({})) (illuminance P N x ({}))"},
        {"float a, b = 1;", "(local unknown float (a) (b 1))"},
        {"varying color a[2] = {1, 2};", "(local varying color ([2] a ({} 1 2)))"},
        {"float a[] = {};", "(local unknown float ([0] a ({})))"},
        {"extern point Q; extern uniform float x;",
         "(extern unknown point (Q)) (extern uniform float (x))"},
        {"float[3.0] a; string[] b;", "(local unknown float[3] (a)) (local unknown string[] (b))"},
        {"float light = 1;", "(local unknown float (light 1))"},
        {"float f(float x; output uniform color c[];) { return x; }",
         "(float f ((input unknown float (x)) (output uniform color ([0] c))) ({} (return x)))"},
        {"varying color g() {}", "(color g () ({}))"},
        {"void f(varying float x; output float y) {}",
         "(void f ((input varying float (x)) (output unknown float (y))) ({}))"},
    };
    for (const ShapeCase& c : cases)
        EXPECT_EQ(BodyOf(c.source), c.tree) << c.source;
}

TEST(SlcParser, BuildsDefinitions)
{
    static const ShapeCase cases[] = {
        {"light a() {}", "(light a () ({}))"},
        {"surface a() {}", "(surface a () ({}))"},
        {"volume a() {}", "(volume a () ({}))"},
        {"displacement a() {}", "(displacement a () ({}))"},
        {"imager a() {}", "(imager a () ({}))"},
        {"surface volume(float x = 1, y[2] = {3, 4}; varying color c = 1;) {}",
         "(surface volume ((input uniform float (x 1) ([2] y ({} 3 4))) "
         "(input varying color (c 1))) ({}))"},
        {"surface a(output float x = 1; output varying point p = 2) {}",
         "(surface a ((output uniform float (x 1)) (output varying point (p 2))) ({}))"},
        {"f() {} point g(float x) {} uniform float h() {}",
         "(float f () ({})) (point g ((input unknown float (x))) ({})) (float h () ({}))"},
        {"float[] f() {}", "(float[] f () ({}))"},
    };
    for (const ShapeCase& c : cases)
        EXPECT_EQ(TreeOf(c.source), c.tree) << c.source;
}

TEST(SlcParser, NamesTheOutputByTheLastShader)
{
    const ParsedSource parsed("surface a() {} float f() {} light b() {}");
    EXPECT_EQ(SlcShaderName(), "b");
}

TEST(SlcParser, GivesNodesBelowTheRootThePlaceOfTheirFirstToken)
{
    const ParsedSource parsed("surface\ns(float\nx = 1)\n{\nif (a\n< b)\nx = a +\nb;\n}");
    ASSERT_NE(parsed.Root(), nullptr);
    const auto& shader = dynamic_cast<SlcShaderDefNode&>(*parsed.Root()->GetDefinitions().front());
    const SlcVarDefsNode& formal = *shader.GetFormals()->GetVarDefs().front();
    const auto& branch =
        dynamic_cast<SlcIfThenStmtNode&>(*shader.GetBody()->GetStatements().front());
    const auto& assignment = dynamic_cast<SlcAssignStmtNode&>(*branch.GetThen());
    const SlcExprNode& sum = *assignment.GetAssignment()->GetValue();
    EXPECT_EQ(shader.GetNoLine(), 1);
    EXPECT_EQ(formal.GetNoLine(), 2);
    EXPECT_EQ(formal.GetDefExprs()->GetNoLine(), 3);
    EXPECT_EQ(branch.GetNoLine(), 5);
    EXPECT_EQ(branch.GetCondition()->GetNoLine(), 5);
    EXPECT_EQ(assignment.GetNoLine(), 7);
    EXPECT_EQ(sum.GetNoLine(), 7);
    EXPECT_EQ(dynamic_cast<const SlcBinOpExprNode&>(sum).GetRight()->GetNoLine(), 8);
    EXPECT_EQ(parsed.Root()->GetNoLine(), 10);
    EXPECT_EQ(*sum.GetFileParsed(), "test.sl");
}

TEST(SlcParser, MakesTheTreeOfTheArchitecturePage)
{
    std::ifstream file(SLC_DOCS_FOLDER "/architecture.md");
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    std::smatch source;
    std::smatch tree;
    ASSERT_TRUE(std::regex_search(page, source, std::regex("```sl\n([^`]*)```")));
    ASSERT_TRUE(std::regex_search(page, tree, std::regex("```tree\n([^`]*)\n```")));
    EXPECT_EQ(TreeOf(source[1]), std::regex_replace(tree[1].str(), std::regex("\\s+"), " "));
}
