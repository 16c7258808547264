// The order in which the semantic driver hands a shader to the usage checks.

#include "semantics/SlcUsageRecord.h"

#include <gtest/gtest.h>

#include "frontend/SlcNodes.h"
#include "helpers/CheckedShader.h"
#include "semantics/SlcBuiltInDetailRules.h"
#include "semantics/SlcCheckSemantics.h"
#include "semantics/SlcDeleteTree.h"
#include "symbols/SlcBuiltInTable.h"
#include "symbols/SlcShaderSymbolTable.h"

namespace {

/// Writes down what it is told, with the line of each node.
class Recorder : public SlcUsageRecord {
public:
    explicit Recorder(std::string& log) : m_log(log) {}

    std::unique_ptr<SlcUsageRecord> CreateBranch(SlcPtr<SlcSymbolTable> base) override
    {
        EXPECT_FALSE(base.Null());
        m_log += "( ";
        return std::make_unique<Recorder>(m_log);
    }
    std::unique_ptr<SlcUsageRecord> CreateBody(SlcPtr<SlcSymbolTable> base) override
    {
        EXPECT_FALSE(base.Null());
        m_log += "body ";
        return std::make_unique<Recorder>(m_log);
    }
    void Check(SlcSyntaxNode* node, const SlcPtr<SlcSymbolTable>& table) override
    {
        EXPECT_FALSE(table.Null());
        m_log += std::to_string(node->GetNoLine()) + " ";
    }
    void Promote(SlcIfThenElseStmtNode*, const SlcPtr<SlcSymbolTable>&, SlcUsageRecord& a,
                 SlcUsageRecord& b) override
    {
        EXPECT_NE(&a, &b);
        m_log += "else) ";
    }
    void Promote(SlcIfThenStmtNode*, const SlcPtr<SlcSymbolTable>&, SlcUsageRecord&) override
    {
        m_log += "if) ";
    }
    void Promote(SlcLoopStmtNode* loop, const SlcPtr<SlcSymbolTable>&, SlcUsageRecord&) override
    {
        m_log += loop->ToString() + ") ";
    }

private:
    std::string& m_log;
};

std::string UsageOf(const std::string& source)
{
    const auto root = ParseText(source);
    SlcShaderSymbolTable::ResetStatics();
    const SlcPtr<SlcSymbolTable> global = SlcBuiltInTable(SlcBuiltInDetailRules());
    const auto errors = MakeShared<SlcSemanticError>();
    SlcOptionsControl options;
    std::string log;
    Recorder record(log);
    SlcCheckSemantics(errors, options, &record)(root.get(), global, global, nullptr, nullptr);
    EXPECT_TRUE(errors->NoError());
    SlcDeleteTree()(root.get());
    return log;
}

TEST(SlcUsageRecord, FollowsTheOrderOfExecution)
{
    EXPECT_EQ(UsageOf("float f(float x) {\n"
                      "  float y = x;\n"
                      "  return y; }\n"
                      "surface a() {\n"
                      "  float i;\n"
                      "  if (u > 0)\n"
                      "    i = 1;\n"
                      "  else\n"
                      "    i = 2;\n"
                      "  if (v > 0) {\n"
                      "    i = f(3); }\n"
                      "  for (i = 0;\n"
                      "       i < 2;\n"
                      "       i += 1)\n"
                      "    while (i > 0)\n"
                      "      break;\n"
                      "  illuminance(P,\n"
                      "              N,\n"
                      "              1)\n"
                      "    Ci += Cl;\n"
                      "  printf(\"x\"); }"),
              "body 2 3 body 5 6 ( 7 ( 9 else) 10 ( 11 if) "
              "( 12 13 ( 15 16 while) 14 for) ( 17 18 19 20 illuminance) 21 ");
}

}  // namespace
