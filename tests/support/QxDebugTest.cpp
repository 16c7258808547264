#include "support/QxDebug.h"

#include <csignal>
#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "helpers/TemporaryFolder.h"
#include "support/SlcUnfinishedFile.h"

namespace {

/// Recurses until the stack overflows; each call uses at least 4096 bytes of it.
int Overflow(int depth)
{
    volatile char piece[4096] = {};
    piece[0] = static_cast<char>(depth);
    return depth < 0 ? 0 : Overflow(depth + 1) + piece[0];
}

void Raise(int signal)
{
    if (QxDebug::InitErrorSignalsHandling())
        std::raise(signal);
    std::exit(0);
}

}  // namespace

TEST(QxDebugDeathTest, ReportsASignalWithItsStack)
{
    struct SignalCase {
        const char* name;
        int signal;
        bool asksForReport;
    };
    static const SignalCase cases[] = {
        {"Illegal instruction", SIGILL, true},
        {"Trace trap", SIGTRAP, false},
        {"Abort", SIGABRT, false},
        {"Floating point exception", SIGFPE, true},
        {"Bus error", SIGBUS, true},
        {"Segmentation violation", SIGSEGV, true},
        {"Bad argument to system call", SIGSYS, false},
    };
    for (const SignalCase& c : cases) {
        const std::string report = "^Received signal " + std::to_string(c.signal) + " \\(" +
                                   c.name + "\\)\\.\n\n\\[0\\]\t.*\n\\[1\\]\t.*";
        const std::string request = "\n\n \\* Please report this crash to .+\\. \\*\n$";
        EXPECT_EXIT(Raise(c.signal), testing::ExitedWithCode(1), report) << c.name;
        if (c.asksForReport)
            EXPECT_EXIT(Raise(c.signal), testing::ExitedWithCode(1), request) << c.name;
        else
            EXPECT_EXIT(Raise(c.signal), testing::ExitedWithCode(1),
                        testing::Not(testing::HasSubstr("Please report")))
                << c.name;
    }
}

TEST(QxDebugDeathTest, ContinuesAfterAHangup)
{
    const auto raiseTwice = [] {
        EXPECT_TRUE(QxDebug::InitErrorSignalsHandling());
        std::raise(SIGHUP);
        Raise(SIGHUP);
    };
    EXPECT_EXIT(raiseTwice(), testing::ExitedWithCode(0),
                "Received signal 1 \\(Hangup\\)(.|\n)*Received signal 1 \\(Hangup\\)");
}

TEST(QxDebugDeathTest, RemovesUnfinishedFiles)
{
    const TemporaryFolder folder;
    const auto end = [](int signal) {
        QxDebug::EnableRemoval();
        SlcUnfinishedFile removed("removed");
        SlcUnfinishedFile finished("finished");
        SlcUnfinishedFile moved("moved", SlcUnfinishedFile::OnExit::MoveIntoPlace);
        for (const SlcUnfinishedFile* file : {&removed, &finished, &moved})
            TemporaryFolder::Write(file->Path(), "half");
        if (finished.MoveIntoPlace())
            Raise(signal);
    };
    constexpr int k_noSignal = 0;
    for (const int signal :
         {SIGINT, SIGTERM, SIGQUIT, SIGPIPE, SIGXCPU, SIGXFSZ, SIGSEGV, k_noSignal}) {
        if (signal == SIGSEGV)
            EXPECT_EXIT(end(signal), testing::ExitedWithCode(1), "Segmentation violation");
        else if (signal == k_noSignal)
            EXPECT_EXIT(end(signal), testing::ExitedWithCode(0), "");
        else
            EXPECT_EXIT(end(signal), testing::KilledBySignal(signal), "");
        EXPECT_EQ(std::filesystem::remove("moved"), signal == k_noSignal);
        EXPECT_TRUE(std::filesystem::remove("finished")) << signal;
        EXPECT_TRUE(std::filesystem::is_empty(".")) << signal;
    }
}

TEST(QxDebug, LeavesTheSignalsOfAHostProgramAlone)
{
    const TemporaryFolder folder;
    const SlcUnfinishedFile file("file");
    struct sigaction action = {};
    ASSERT_EQ(::sigaction(SIGINT, nullptr, &action), 0);
    EXPECT_EQ(action.sa_handler, SIG_DFL);
}

TEST(QxDebugDeathTest, ReportsAnOverflowOfTheStack)
{
    const auto overflow = [] {
        EXPECT_TRUE(QxDebug::InitErrorSignalsHandling());
        std::exit(Overflow(1) == 0 ? 2 : 3);
    };
    EXPECT_EXIT(overflow(), testing::ExitedWithCode(1), "Segmentation violation");
}
