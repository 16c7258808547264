#include "backends/SlcCodeBlock.h"

#include <gtest/gtest.h>

namespace {

class CodeBlockTest : public testing::Test {
protected:
    static SlcLabel Label(const char* name) { return MakeShared<SlcLabelICode>(name); }

    std::vector<std::string> m_reports;
    SlcCodeBlock m_block{[this](std::string_view text) { m_reports.emplace_back(text); }};
};

TEST_F(CodeBlockTest, FillsJumpsForwardAndBack)
{
    m_block.AddLabelRef(Label("S"));
    m_block.AddInstr(SqxMark::Goto);
    m_block.AddGotoLabel(Label("E"));
    m_block.AddInstr("EVAL_LIGHTS_FOR_P");
    m_block.AddInstr(SqxMark::Goto);
    m_block.AddGotoLabel(Label("S"));
    m_block.AddLabelRef(Label("E"));
    EXPECT_EQ(m_block.ResolveUnknownLabels(), "");
    EXPECT_EQ(m_block.Values(), (std::vector<std::int16_t>{432, 5, 442, 432, 0}));
    // Labels belong to one block.
    m_block.Reset();
    m_block.AddGotoLabel(Label("S"));
    EXPECT_EQ(m_block.ResolveUnknownLabels(), "S");
    EXPECT_TRUE(m_reports.empty());
}

TEST_F(CodeBlockTest, ReportsWhatDoesNotFitOnceAKind)
{
    for (const int value : {-1, 0, 32767, 32768, 40000})
        m_block.AddConst(value, "Line");
    m_block.Reset();
    m_block.AddConst(32768, "Line");
    m_block.AddConst(32768, "Length");
    ASSERT_EQ(m_reports.size(), 2u);
    EXPECT_EQ(m_reports[0],
              "Line 32768 does not fit into byte-code, whose largest number is 32767, "
              "use '--dso'");
    EXPECT_EQ(m_reports[1].substr(0, 6), "Length");
}

}  // namespace
