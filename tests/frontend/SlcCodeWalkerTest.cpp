#include "frontend/SlcCodeWalker.h"

#include <gtest/gtest.h>

#include "frontend/SlcNodes.h"
#include "helpers/ParsedSource.h"

namespace {

/// Records which overridden function each node reaches, a `Case` or `Default`.
class Recorder : public SlcCodeWalker {
public:
    std::string m_seen;

private:
    using SlcCodeWalker::Case;
    void Case(SlcTypeNode*) override { m_seen += "type "; }
    void Case(SlcPointTypeNode*) override { m_seen += "point "; }
    void Case(SlcStmtNode* node) override { See("stmt", node); }
    void Case(SlcIfThenStmtNode* node) override { See("if", node); }
    void Case(SlcExprNode* node) override { See("expr", node); }
    void Case(SlcRelationNode* node) override { See("relation", node); }
    void Case(SlcIntConstNode*) override { m_seen += "int "; }
    void Default(SlcSyntaxNode* node) override { See("node", node); }

    void See(const char* name, SlcSyntaxNode* node)
    {
        m_seen += std::string(name) + " ";
        node->WalkIn(this);
    }
};

std::string Seen(SlcSyntaxNode* node)
{
    Recorder recorder;
    node->ApplyWalker(&recorder);
    return recorder.m_seen;
}

SlcStmtNode* FirstStatement(const ParsedSource& source)
{
    const auto& shader = dynamic_cast<SlcShaderDefNode&>(*source.Root()->GetDefinitions().front());
    return shader.GetBody()->GetStatements().front().get();
}

class Annotation : public SlcAnnotation {
public:
    explicit Annotation(int& alive) : m_alive(alive) { ++m_alive; }
    ~Annotation() override { --m_alive; }

private:
    int& m_alive;
};

}  // namespace

TEST(SlcCodeWalker, CallsTheNearestOverriddenCase)
{
    static const struct {
        const char* statement;
        const char* seen;
    } cases[] = {
        {"x = a + 1;", "stmt expr node node expr expr node expr node "},
        {"if (a < b) ;", "if relation expr node expr node stmt "},
        {"if (a < b) ; else ;", "stmt relation expr node expr node stmt stmt "},
        {"break;", "stmt int "},
        {"continue 2;", "stmt int "},
        {"x[i] = y;", "stmt expr node node expr node expr node "},
        {"point p; vector v;", "stmt node node node node point node node node "},
    };
    for (const auto& c : cases)
        EXPECT_EQ(
            Seen(FirstStatement(ParsedSource(std::string("surface s() {") + c.statement + "}"))),
            c.seen)
            << c.statement;
}

TEST(SlcCodeWalker, DoesNotTreatVectorsAndNormalsAsPoints)
{
    EXPECT_EQ(Seen(SlcTypeNode::APoint()), "point ");
    for (SlcTypeNode* type : {SlcTypeNode::AVector(), SlcTypeNode::ANormal(),
                              SlcTypeNode::AAnyPoint(), SlcTypeNode::AAnyVector()})
        EXPECT_EQ(Seen(type), "type ") << type->ToString();
}

TEST(SlcSyntaxNode, HoldsOneAnnotation)
{
    int alive = 0;
    {
        SlcStmtsNode node;
        EXPECT_TRUE(node.GetAnnotation().Null());
        node.SetAnnotation(MakeShared<Annotation>(alive));
        node.SetAnnotation(MakeShared<Annotation>(alive));
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
}

TEST(SlcExprNode, IsConstantOnlyIfAllItsPartsAre)
{
    static const struct {
        const char* expression;
        bool isConstant;
    } cases[] = {
        {"1", true},
        {"\"a\"", true},
        {"PI", true},
        {"pi", false},
        {"-PI * 2 + f(1, 2)", true},
        {"f(x)", false},
        {"f()", true},
        {"(1, 2, 3)", true},
        {"(1, 2, x)", false},
        {"color (1, 2, 3)", true},
        {"a[1]", false},
        {"(x = 1)", false},
        {"1 < 2 ? 1 : 2", false},
        {"texture(\"a\")", false},
    };
    for (const auto& c : cases) {
        const ParsedSource parsed(std::string("surface s() { y = ") + c.expression + "; }");
        const auto& assignment = dynamic_cast<SlcAssignStmtNode&>(*FirstStatement(parsed));
        EXPECT_EQ(assignment.GetAssignment()->GetValue()->IsConstExpr(), c.isConstant)
            << c.expression;
    }
}
