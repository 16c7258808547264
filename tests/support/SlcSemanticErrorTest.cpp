#include "support/reports/SlcSemanticError.h"

#include <functional>

#include <gtest/gtest.h>

#include "frontend/SlcNodes.h"
#include "icode/SlcBlockICode.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcNearError.h"

namespace {

const std::string k_file = "a.sl";
const SlcPosition k_position = {7, 3, &k_file};

std::unique_ptr<SlcExprNode> Name(const char* name)
{
    return std::make_unique<SlcIdentExprNode>(k_position, SlcLexicalNode::CreateIdent(name));
}

std::unique_ptr<SlcExprNode> Number(double value)
{
    return std::make_unique<SlcConstExprNode>(k_position, SlcLexicalNode::CreateFloat(value));
}

std::string Written(const std::function<void()>& report)
{
    testing::internal::CaptureStderr();
    report();
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(SlcSemanticError, PrintsThePlaceOfTheNodeOrTheMessageAlone)
{
    const auto node = Name("x");
    const auto near = Number(1.5);
    const auto comment = MakeShared<SlcCommentICode>("x = 1", 9, &k_file);
    SlcSemanticError sink;
    struct ReportCase {
        std::function<void()> report;
        const char* text;
    };
    const ReportCase cases[] = {
        {[&] { sink.Error(node.get(), "m"); }, "a.sl:7: ERROR: m\n"},
        {[&] { sink.Error(node.get(), "m", "d"); }, "a.sl:7: ERROR: m: d\n"},
        {[&] { sink.Error(node.get(), "m", near.get()); }, "a.sl:7: ERROR: m (near '1.500000')\n"},
        {[&] { sink.Error(node.get(), "m", static_cast<SlcSyntaxNode*>(nullptr)); },
         "a.sl:7: ERROR: m\n"},
        {[&] { sink.Error(nullptr, "m"); }, "m\n"},
        {[&] { sink.Error(nullptr, "m", "d"); }, "m: d\n"},
        {[&] { sink.Error(nullptr, "m", near.get()); }, "m\n"},
        {[&] { sink.ErrorICode(comment, "m"); }, "a.sl:9: ERROR: m\n"},
        {[&] { sink.Warning(node.get(), "m", 1); }, "a.sl:7: WARNING: m\n"},
        {[&] { sink.Warning(node.get(), "m", "d", 1); }, "a.sl:7: WARNING: m: d\n"},
        {[&] { sink.Warning(nullptr, "m", "d", 1); }, "m: d\n"},
    };
    for (const ReportCase& c : cases)
        EXPECT_EQ(Written(c.report), c.text);
}

TEST(SlcSemanticError, DistinguishesErrorsWarningsAndSilentWarnings)
{
    const auto node = Name("x");
    SlcSemanticError sink;
    ResetNbErrorsAndWarnings();
    EXPECT_EQ(Written([&] { sink.Warning(node.get(), "m", 2); }), "");
    EXPECT_EQ(NbWarnings(), 0);

    SetWarningLevel(2);
    EXPECT_NE(Written([&] { sink.Warning(node.get(), "m", 2); }), "");
    SetWarningLevel(1);
    EXPECT_EQ(NbWarnings(), 1);
    EXPECT_TRUE(sink.NoError());

    Written([&] { sink.Error(nullptr, "m"); });
    EXPECT_EQ(NbErrors(), 1);
    EXPECT_FALSE(sink.NoError());
}

TEST(SlcSemanticError, PrintsTheFunctionOnceBeforeItsReports)
{
    const auto node = Name("x");
    SlcSemanticError sink;
    EXPECT_EQ(Written([&] {
                  sink.Error(node.get(), "before");
                  sink.SetFuncName(SlcLexicalNode::CreateIdent("f"), &k_file);
                  sink.Warning(node.get(), "silent", 2);
                  sink.Error(node.get(), "one");
                  sink.Warning(node.get(), "two", 1);
                  sink.SetFuncName(SlcLexicalNode::CreateIdent("g"), &k_file);
                  sink.Error(node.get(), "three");
              }),
              "a.sl:7: ERROR: before\n"
              "a.sl: In function f\n"
              "a.sl:7: ERROR: one\n"
              "a.sl:7: WARNING: two\n"
              "a.sl: In function g\n"
              "a.sl:7: ERROR: three\n");
}

TEST(SlcSemanticErrorDeathTest, EndsTheProcessAfterAFatalError)
{
    const auto node = Name("x");
    const auto comment = MakeShared<SlcCommentICode>("x = 1", 9, &k_file);
    SlcSemanticError sink;
    sink.SetFuncName(SlcLexicalNode::CreateIdent("f"), &k_file);
    EXPECT_EXIT(sink.FatalError(node.get(), "m"), testing::ExitedWithCode(1),
                "a.sl: In function f\na.sl:7: FATAL ERROR: m\n\\*+ Please contact '.+' !\n");
    EXPECT_EXIT(sink.FatalError("m"), testing::ExitedWithCode(1),
                "^FATAL ERROR: m\n\\*+ Please contact '.+' !!!\n");
    EXPECT_EXIT(sink.FatalErrorICode(comment, "m"), testing::ExitedWithCode(1),
                "^a.sl:9: FATAL ERROR: m\n\\*+ Please contact '.+' !!!\n");
}

TEST(SlcNearError, ShowsTheNearestNameOrConstant)
{
    SlcTypeNode* const type = SlcTypeNode::AFloat();
    auto call = std::make_unique<SlcProcCallExprNode>(
        k_position, SlcLexicalNode::CreateIdent("noise"), std::make_unique<SlcProcArgsNode>());
    SlcConstExprNode text(k_position, SlcLexicalNode::CreateString("\"rgb\""));
    SlcAddExprNode sum(Name("a"), std::make_unique<SlcMultExprNode>(Name("b"), Number(2)));
    SlcCastExprNode cast(k_position, type, nullptr, Name("a"));
    SlcNearError near;
    EXPECT_EQ(near(&sum), "a");
    EXPECT_EQ(near(call.get()), "noise");
    EXPECT_EQ(near(&text), "\"rgb\"");
    EXPECT_EQ(near(Number(2).get()), "2.000000");
    EXPECT_EQ(near(&cast), "<somewhere>");
}
