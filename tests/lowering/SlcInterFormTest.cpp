#include "icode/SlcInterForm.h"

#include <gtest/gtest.h>

#include <set>

#include "frontend/SlcCodeWalker.h"
#include "frontend/SlcNodes.h"
#include "icode/SlcOperandWalker.h"
#include "lowering/LowerTestHelp.h"
#include "symbols/SlcSymbolEntry.h"

namespace {

/// Returns "yes" or "no" for one fact of each parameter, in order.
std::string OfEach(LoweredShader& shader, bool SlcParameterInfo::*fact)
{
    std::string text;
    for (const SlcParameterInfo& parameter : shader.Form().m_parameters)
        text += std::string(text.empty() ? "" : " ") + (parameter.*fact ? "yes" : "no");
    return text;
}

TEST(SlcInterForm, FindsTheSpaceAndContextOfEachDefaultValue)
{
    struct ParameterCase {
        const char* formal;
        const char* space;
        bool objectSpace;
        bool context;
    };
    static const ParameterCase cases[] = {
        {"point p = point \"shader\" (1, 2, 3)", "\"shader\"", false, false},
        {"point p = point \"object\" (1, 2, 3)", "\"object\"", true, false},
        {"point p = transform(\"object\", point 0)", "\"current\"", true, false},
        {"point p = 2 * point \"shader\" (1, 2, 3)", "\"\"", false, false},
        {"point p = 2 * point (1, 2, 3)", "\"current\"", false, false},
        {"point p = point \"shader\" 1 + vector \"world\" 1", "\"\"", false, false},
        {"point p = 0", "\"current\"", false, false},
        {"matrix m = matrix \"shader\" 1", "\"shader\"", false, false},
        {"color c = color \"hsv\" (0, 1, 1)", "\"hsv\"", false, false},
        {"color c = 1", "\"rgb\"", false, false},
        {"float f = 1", "\"\"", false, false},
        {"point a[2] = {0, 0}", "\"current\"", false, false},
        {"varying float f = u", "\"\"", false, true},
        {"float f = time", "\"\"", false, true},
        {"varying float f = random()", "\"\"", false, true},
    };
    for (const ParameterCase& c : cases) {
        LoweredShader shader(std::string("surface s(") + c.formal + ") {}");
        const SlcInterForm& form = shader.Form();
        ASSERT_EQ(form.m_parameters.size(), 1u) << c.formal;
        const SlcParameterInfo& parameter = form.m_parameters[0];
        EXPECT_EQ(parameter.space->GetText(), c.space) << c.formal;
        EXPECT_EQ(parameter.needsObjectSpace, c.objectSpace) << c.formal;
        EXPECT_EQ(parameter.initDependsOnContext, c.context) << c.formal;
    }
}

TEST(SlcInterForm, FindsDefaultValuesThatNeedObjectSpace)
{
    LoweredShader shader("float f() { return xcomp(point \"object\" 1); }"
                         "float g() { return f(); }"
                         "surface s(float a = g(); float b = 1; float c = xcomp(point 1)) {}");
    EXPECT_EQ(OfEach(shader, &SlcParameterInfo::needsObjectSpace), "yes no no");
}

TEST(SlcInterForm, PropagatesContextToLaterParameters)
{
    LoweredShader shader("surface s(varying float a = u; varying float b = a; float c = 1; "
                         "float d = c) {}");
    EXPECT_EQ(OfEach(shader, &SlcParameterInfo::initDependsOnContext), "yes yes no no");
}

TEST(SlcInterForm, InitializesEachParameterByASeparateList)
{
    struct InitCase {
        const char* formal;
        const char* code;
    };
    static const InitCase cases[] = {
        {"float f = 1", ""},
        {"float f = 2 * 3", "t0 = 2 * 3;"},
        {"color c = 1", "t0 = 1;"},
        {"float a[2] = {4, 5}", "t0 = &t1[0]; t0 = 4; t0 = &t1[1]; t0 = 5;"},
        {"varying float f = u + 1", "{ t0 = u + 1; }"},
        {"varying color c = u", "{ t0 = u; }"},
        {"float a[2] = {4, 5}; float[2.] b = a", ""},
        {"float a[1] = {4}; color[2.] b = a", "t0 = &a[0]; t1 = &t2[0]; t1 = t0;"},
        // An element is copied, since a parameter cannot be initialized from a reference.
        {"float a[1] = {4}; float b = a[0]", "t0 = &a[0]; t1 = t0;"},
        {"varying float a[1] = {4}; varying color b = a[0]", "t0 = &a[0]; { t1 = t0; }"},
    };
    for (const InitCase& c : cases) {
        LoweredShader shader(std::string("surface s(") + c.formal + ") {}");
        const SlcParameterInfo& parameter = shader.Form().m_parameters.back();
        EXPECT_EQ(ToText(*parameter.initList), c.code) << c.formal;
        ASSERT_EQ(parameter.initValues.size(), 1u) << c.formal;
        EXPECT_FALSE(parameter.initValues[0]->GetType()->IsArrayRefType()) << c.formal;
    }
}

/// Collects the constants that a list reads.
class ConstantReader : public SlcOperandWalker {
public:
    explicit ConstantReader(const SlcListICode& list)
    {
        for (const auto& code : list.m_icodes)
            Visit(code);
    }
    std::set<const SlcLexType*> m_constants;

private:
    void Read(SlcOperand& operand) override
    {
        if (operand->IsConst())
            m_constants.insert(&*operand);
    }
    void Write(SlcOperand&) override {}
};

// The byte-code writer numbers the constants of each list in the operands themselves.
TEST(SlcInterForm, MakesSeparateConstantsForEachList)
{
    LoweredShader shader("surface s(varying float a = occlusion(P, N, 1);) {"
                         "Ci = occlusion(P, N, 1); }");
    const auto main = ConstantReader(*shader.Form().m_mainList).m_constants;
    const auto parameter = ConstantReader(*shader.Form().m_parameters[0].initList).m_constants;
    EXPECT_FALSE(main.empty() || parameter.empty());
    for (const SlcLexType* constant : parameter)
        EXPECT_FALSE(main.contains(constant));
}

TEST(SlcInterForm, ListsThePredefinedVariablesByFirstUse)
{
    struct HiddenCase {
        const char* shader;
        const char* names;
    };
    static const HiddenCase cases[] = {
        {"surface x() {}", "Ci Oi"},
        {"light x() {}", "Cl Ol L"},
        {"displacement x() { P = N * u + P; }", "P N u"},
        {"surface x() { Ci = diffuse(N); }", "Ci Oi N P L Cl"},
        {"float f() { extern float s; return s; } surface x() {}", "Ci Oi"},
        {"float f() { extern float s; return s; } surface x() { Ci = f(); }", "s Ci Oi"},
    };
    for (const HiddenCase& c : cases) {
        LoweredShader shader(c.shader);
        std::string names;
        for (const auto& variable : shader.Form().m_hiddenVars)
            names += (names.empty() ? "" : " ") + variable->GetName();
        EXPECT_EQ(names, c.names) << c.shader;
    }
}

TEST(SlcInterForm, ListsEachSpaceOnce)
{
    LoweredShader shader("surface s() { point a = point \"world\" P; point b = point \"world\" N; "
                         "point c = transform(\"camera\", P); }");
    std::string spaces;
    for (const auto* space : shader.Form().m_spaces)
        spaces += space->GetText();
    EXPECT_EQ(spaces, "\"object\"\"shader\"\"world\"\"camera\"");
}

TEST(SlcInterForm, FindsWritesOfP)
{
    struct WriteCase {
        const char* body;
        bool modified;
    };
    static const WriteCase cases[] = {
        {"point q = P;", false},
        {"P = P + N;", true},
        {"setxcomp(P, 1);", true},
        {"point q = P; setxcomp(q, 1);", false},
        {"void f(output point p) { p = 0; } f(P);", true},
        {"void f(point p) { point q = p; } f(P);", false},
    };
    for (const WriteCase& c : cases) {
        LoweredShader shader(std::string("displacement d() {") + c.body + "}");
        EXPECT_EQ(shader.Form().m_PModified, c.modified) << c.body;
    }
}

/// Lists the loops and `if` statements of a tree in source order, each with an exclamation mark if
/// it is marked.
class MarkReader : public SlcCodeWalker {
public:
    std::string m_marks;

private:
    using SlcCodeWalker::Case;
    void Case(SlcLoopStmtNode* node) override { Note(node); }
    void Case(SlcIfThenStmtNode* node) override { Note(node); }
    void Case(SlcIfThenElseStmtNode* node) override { Note(node); }
    void Default(SlcSyntaxNode* node) override { node->WalkIn(this); }
    template <class Node>
    void Note(Node* node)
    {
        m_marks += node->ToString() + (node->ContainsBreakOrContinue() ? "! " : " ");
        node->WalkIn(this);
    }
};

TEST(SlcMarkLeaves, MarksStatementsUpToTheLoopOfABreakOrContinue)
{
    struct MarkCase {
        const char* body;
        const char* marks;
    };
    static const MarkCase cases[] = {
        {"while (u < 1) { if (v < 1) break; }", "while! if-then! "},
        {"while (u < 1) while (v < 1) { if (s < 1) continue; }", "while while! if-then! "},
        {"while (u < 1) while (v < 1) { if (s < 1) break 2; }", "while! while! if-then! "},
        {"while (u < 1) { if (s < 1) { break; } if (t < 1) o = 1; else o = 2; }",
         "while! if-then! if-then-else "},
        {"while (u < 1) { if (s < 1) break; while (t < 1) o = 1; }", "while! if-then! while "},
    };
    for (const MarkCase& c : cases) {
        LoweredShader shader(std::string("displacement d(output varying float o = 0) {") + c.body +
                             "}");
        MarkReader reader;
        shader.Root()->ApplyWalker(&reader);
        EXPECT_EQ(reader.m_marks, c.marks) << c.body;
    }
}

}  // namespace
