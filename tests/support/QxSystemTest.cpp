#include "support/QxSystem.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <vector>

#include "helpers/TemporaryFolder.h"

namespace {

using testing::UnorderedElementsAre;

std::vector<std::string> Scan(const char* directory, bool recursive)
{
    std::vector<std::string> paths;
    const auto append = [](const char* path, void* list) {
        static_cast<std::vector<std::string>*>(list)->emplace_back(path);
    };
    QxSystem::ScanDir(directory, append, &paths, recursive);
    return paths;
}

class QxSystemTest : public testing::Test {
protected:
    TemporaryFolder m_folder;
};

TEST_F(QxSystemTest, ScansADirectoryOrOneLevelBelow)
{
    TemporaryFolder::Write("top/file", "");
    TemporaryFolder::Write("top/one/a", "");
    TemporaryFolder::Write("top/one/deep/b", "");
    TemporaryFolder::Write("top/two/c", "");
    std::filesystem::create_directory_symlink("two", "top/link");
    EXPECT_THAT(Scan("top", false),
                UnorderedElementsAre("top/file", "top/one", "top/two", "top/link"));
    EXPECT_THAT(Scan("top", true), UnorderedElementsAre("top/one/a", "top/one/deep", "top/two/c"));
    EXPECT_THAT(Scan("missing", false), UnorderedElementsAre());
    EXPECT_THAT(Scan("top/file", true), UnorderedElementsAre());
}

TEST_F(QxSystemTest, ReturnsPropertiesOfFiles)
{
    TemporaryFolder::Write("dir/a", "12345");
    TemporaryFolder::Write("dir/inner/b", "123");
    std::filesystem::create_symlink("dir", "link");
    std::filesystem::create_symlink("nowhere", "dir/dangling");
    std::filesystem::create_symlink("..", "dir/inner/up");
    struct Case {
        const char* path;
        bool exists;
        bool isDir;
        std::uintmax_t size;
    };
    static const Case cases[] = {
        {"dir", true, true, 8},           {"dir/a", true, false, 5},    {"link", true, false, 0},
        {"dir/dangling", true, false, 0}, {"missing", false, false, 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(QxSystem::FileExists(c.path), c.exists) << c.path;
        EXPECT_EQ(QxSystem::FileIsDir(c.path), c.isDir) << c.path;
        EXPECT_EQ(QxSystem::FileSize(c.path), c.size) << c.path;
    }
    const timespec times[] = {{1000, 0}, {2000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, "dir/a", times, 0), 0);
    EXPECT_EQ(QxSystem::FileAccessTime("dir/a"), 1000);
    EXPECT_EQ(QxSystem::FileModifTime("dir/a"), 2000);
    EXPECT_EQ(QxSystem::FileAccessTime("missing"), 0);
    EXPECT_EQ(QxSystem::FileModifTime("missing"), 0);
}

TEST_F(QxSystemTest, CopiesFiles)
{
    const std::string text(20000, 'x');
    TemporaryFolder::Write("from", text);
    TemporaryFolder::Write("to", text + "and more");
    EXPECT_TRUE(QxSystem::FileCopy("from", "to"));
    EXPECT_EQ(TemporaryFolder::Read("to"), text);
    EXPECT_TRUE(QxSystem::FileCopy("from", "from"));
    EXPECT_EQ(TemporaryFolder::Read("from"), text);
    std::filesystem::create_directory("dir");
    EXPECT_FALSE(QxSystem::FileCopy("from", "missing/to"));
    EXPECT_FALSE(QxSystem::FileCopy("missing", "to"));
    EXPECT_FALSE(QxSystem::FileCopy("dir", "copy"));
    EXPECT_FALSE(QxSystem::FileCopy("from", "/dev/full"));
}

TEST_F(QxSystemTest, ReturnsPropertiesOfFileSystemsAndTheMachine)
{
    EXPECT_GT(QxSystem::DiskSize("."), 0);
    EXPECT_LE(QxSystem::DiskFree("."), QxSystem::DiskSize("."));
    EXPECT_EQ(QxSystem::DiskSize("missing"), 0);
    EXPECT_EQ(QxSystem::DiskFree("missing"), 0);
    EXPECT_EQ(QxSystem::FsType("missing"), 0);
    std::string name;
    QxSystem::SysFs("/proc/self", name);
    EXPECT_EQ(name, "proc");
    QxSystem::SysFs("missing", name);
    EXPECT_EQ(name, "unknown");
    EXPECT_GT(QxSystem::MaxOpenFiles(), 3u);
    char host[256];
    EXPECT_TRUE(QxSystem::HostName(host, sizeof host));
    EXPECT_FALSE(QxSystem::HostName(host, 0));
}

TEST_F(QxSystemTest, LaunchesPrograms)
{
    const int child = QxSystem::LaunchProgram("sh", "-c", "echo \"$1\" >out; exit 3", "sh", "a b");
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_EQ(TemporaryFolder::Read("out"), "a b\n");

    EXPECT_EQ(QxSystem::LaunchProgramAndWait("sh", "-c", "exit 4"), 4);
    EXPECT_EQ(QxSystem::LaunchProgramAndWait("sh", "-c", "kill -9 $$"), -1);
    EXPECT_EQ(QxSystem::LaunchProgramAndWait("./missing"), 127);
}

TEST_F(QxSystemTest, LaunchesProgramsWithOnlyTheStandardStreams)
{
    TemporaryFolder::Write("file", "");
    std::FILE* open = std::fopen("file", "r");
    EXPECT_EQ(
        QxSystem::LaunchProgramAndWait(
            "sh", "-c", "for fd in 3 4 5 6 7 8 9; do [ ! -e /proc/self/fd/$fd ] || exit 1; done"),
        0);
    std::fclose(open);
}

/// A caller that ignores SIGCHLD still gets the exit status of the program, and still ignores the
/// signal afterwards.
TEST_F(QxSystemTest, WaitsIfTheChildSignalIsIgnored)
{
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(QxSystem::LaunchProgramAndWait("sh", "-c", "exit 5"), 5);
    EXPECT_EQ(std::signal(SIGCHLD, before), SIG_IGN);
}

}  // namespace
