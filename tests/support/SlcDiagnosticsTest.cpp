#include "support/SlcDiagnostics.h"

#include <functional>

#include <gtest/gtest.h>

#include "support/SlcSourcePosition.h"

namespace {

/// Returns the counts of errors and warnings after a report, and the text that it writes to
/// standard error: "errors/warnings: text".
std::string Report(const std::function<void()>& report, int level = 1)
{
    ResetNbErrorsAndWarnings();
    SetWarningLevel(level);
    testing::internal::CaptureStderr();
    report();
    SetWarningLevel(1);
    return std::to_string(NbErrors()) + "/" + std::to_string(NbWarnings()) + ": " +
           testing::internal::GetCapturedStderr();
}

const std::string k_file = "a.sl";

/// Sets the position as if the scanner had just read `token`, up to `column`, in line 12 of a.sl.
/// `filler` is the text that a report prints below the line, up to the column of its caret.
void StandAt(int column, std::string_view token, std::string line, std::string filler)
{
    SlcCurrentPosition() = {
        &k_file, 12, column, static_cast<int>(token.size()), std::move(line), std::move(filler)};
}

}  // namespace

TEST(SlcDiagnostics, CountsAndPrintsByTheLevel)
{
    SlcCurrentPosition() = {};
    SlcCurrentPosition().line = 3;
    struct ReportCase {
        std::function<void()> report;
        std::string atLevel0;
        std::string atLevel1;
    };
    const ReportCase cases[] = {
        {[] { WarningNoSource("m"); }, "0/0: ", "0/0: WARNING : m\n"},
        {[] { Warning("m", "d"); }, "0/0: ", "0/1: :3: WARNING: m -- d\n\n"},
        {[] { Warning("m"); }, "0/0: ", "0/1: :3: WARNING: m:\n\n   \n   ^\n"},
        {[] { SeverError("slc", "m"); }, "1/0: slc: ERROR: m\n", "1/0: slc: ERROR: m\n"},
        {[] { SevereWarning("slc", "m"); }, "0/0: slc: WARNING: m\n", "0/0: slc: WARNING: m\n"},
    };
    for (const ReportCase& c : cases) {
        EXPECT_EQ(Report(c.report, 0), c.atLevel0);
        EXPECT_EQ(Report(c.report, 1), c.atLevel1);
    }
}

TEST(SlcDiagnostics, IgnoresWarningLevelsThatDoNotExist)
{
    SetWarningLevel(2);
    SetWarningLevel(3);
    SetWarningLevel(-1);
    EXPECT_EQ(WarningLevel(), 2);
    SetWarningLevel(1);
}

TEST(SlcDiagnostics, PutsTheCaretUnderTheStartOfTheLastToken)
{
    struct CaretCase {
        int column;
        const char* token;
        const char* line;
        const char* filler;
        const char* caretLine;
    };
    static const CaretCase cases[] = {
        {5, "foo", "x=foo;", "     ", "          ^"},
        {3, "foo", "foo;", "   ", "        ^"},                // at the start of the line
        {6, "foo", "\t\t foo", "\t\t    ", "        \t\t ^"},  // tabs stay tabs
        {0, "\n", "foo", "      ", "        ^"},               // before the first token of the line
    };
    for (const CaretCase& c : cases) {
        StandAt(c.column, c.token, c.line, c.filler);
        EXPECT_EQ(Report([] { yyerror("m"); }), std::string("1/0: a.sl:12: ERROR: m:\n\n        ") +
                                                    c.line + "\n" + c.caretLine + "\n")
            << c.line;
    }
}

TEST(SlcDiagnosticsDeathTest, EndsTheProcessAfterAnInternalError)
{
    EXPECT_EXIT(FatalError("SlcFoo::Bar failed"), testing::ExitedWithCode(1),
                "FATAL ERROR: SlcFoo::Bar failed\n\\*\\*\\*\\*\\* Please contact '.+' !!!\n");
}
