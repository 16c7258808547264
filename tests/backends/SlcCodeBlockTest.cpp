#include "backends/SlcCodeBlock.h"

#include <gtest/gtest.h>

namespace {

class CodeBlockTest : public testing::Test {
protected:
    SlcLabel m_start = MakeShared<SlcLabelICode>("S");
    SlcLabel m_end = MakeShared<SlcLabelICode>("E");
    std::vector<std::string> m_reports;
    SlcCodeBlock m_block{[this](std::string_view text) { m_reports.emplace_back(text); }};
};

TEST_F(CodeBlockTest, ReturnsTheNameOfALabelThatIsNotInIt)
{
    m_block.AddLabelRef(m_start);
    m_block.AddGotoLabel(m_start);
    EXPECT_EQ(m_block.ResolveUnknownLabels(), "");
    // Labels belong to one block.
    m_block.Reset();
    m_block.AddGotoLabel(m_start);
    EXPECT_EQ(m_block.ResolveUnknownLabels(), "S");
    EXPECT_TRUE(m_reports.empty());
}

TEST_F(CodeBlockTest, ReportsEachKindOfOverflowOnce)
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

// Each direction is tested alone, since a report for one would hide that the other is missing.
TEST_F(CodeBlockTest, RefusesJumpTargetsThatAreTooLarge)
{
    for (const bool forward : {true, false}) {
        for (const std::size_t place : {32767U, 32768U, 33002U}) {
            m_reports.clear();
            SlcCodeBlock block([this](std::string_view text) { m_reports.emplace_back(text); });
            if (forward)
                block.AddGotoLabel(m_end);
            while (block.Values().size() < place)
                block.AddConst(0, "Line");
            block.AddLabelRef(m_end);
            if (!forward)
                block.AddGotoLabel(m_end);
            EXPECT_EQ(block.ResolveUnknownLabels(), "");
            const std::string report = "Jump target " + std::to_string(place) +
                                       " does not fit into byte-code, whose largest number is "
                                       "32767, use '--dso'";
            EXPECT_EQ(m_reports,
                      place > 32767 ? std::vector<std::string>{report} : std::vector<std::string>{})
                << forward << ' ' << place;
        }
    }
}

}  // namespace
