#include "support/QxSearchPath.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "helpers/TemporaryFolder.h"

namespace {

using testing::ElementsAre;

/// Sets an environment variable, or unsets it if `value` is null, until the object is destroyed.
class Variable {
public:
    Variable(const char* name, const char* value) : m_name(name)
    {
        const char* before = std::getenv(name);
        m_wasSet = before != nullptr;
        m_before = before ? before : "";
        if (value)
            ::setenv(name, value, 1);
        else
            ::unsetenv(name);
    }
    ~Variable()
    {
        if (m_wasSet)
            ::setenv(m_name, m_before.c_str(), 1);
        else
            ::unsetenv(m_name);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
    bool m_wasSet = false;
    std::string m_before;
};

struct TextCase {
    const char* in;
    const char* out;
};

std::string Expanded(void (*expand)(std::string&, const char*), const char* in)
{
    std::string out = "kept";
    expand(out, in);
    return out;
}

TEST(QxSearchPath, ExpandsDirectories)
{
    const Variable home("HOME", "/home/ada");
    const Variable tree("QX_TEST_TREE", "/opt/tree/");
    const Variable nope("QX_TEST_NOPE", nullptr);
    static const TextCase cases[] = {
        {"/a/b/../c", "/a/c"},
        {"/a/./b", "/a/b"},
        {"/a/././b/./.", "/a/b"},
        {"/a/b/..", "/a"},
        {"/a/b/", "/a/b"},
        {"/a/b/../../c", "/c"},
        {"/a/./../b", "/b"},
        {"/../a", "/a"},
        {"/a/..", "/"},
        {"/", "/"},
        {"", "/"},
        {"$QX_TEST_NOPE", "/"},
        {"$QX_TEST_NOPE/x", "/x"},
        {"$QX_TEST_TREE", "/opt/tree"},
        {"$QX_TEST_TREE/$QX_TEST_NOPE/x", "/opt/tree//"
                                          "/x"},
        {"~/x", "/home/ada/x"},
        {"$HOME/x", "/home/ada/x"},
        {"~bob/x", "~bob/x"},
        {"a/../b", "b"},
        {"a/..", "."},
    };
    for (const TextCase& c : cases)
        EXPECT_EQ(Expanded(QxSearchPath::ExpandPath, c.in), c.out) << c.in;
    EXPECT_EQ(Expanded(QxSearchPath::ExpandPath, nullptr), "kept");
}

TEST(QxSearchPath, ExpandsTheWorkingDirectoryAndItsParent)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory("inner");
    std::filesystem::current_path("inner");
    const std::string inner = std::filesystem::current_path();
    const std::string outer = std::filesystem::path(inner).parent_path();
    EXPECT_EQ(Expanded(QxSearchPath::ExpandPath, "."), inner);
    EXPECT_EQ(Expanded(QxSearchPath::ExpandPath, "./x"), inner + "/x");
    EXPECT_EQ(Expanded(QxSearchPath::ExpandPath, ".."), outer);
    EXPECT_EQ(Expanded(QxSearchPath::ExpandPath, "../x"), outer + "/x");
    EXPECT_EQ(Expanded(QxSearchPath::ExpandPath, "../../x/../inner"),
              std::filesystem::path(outer).parent_path().string() + "/inner");
    EXPECT_EQ(Expanded(QxSearchPath::ExpandPath, ".hidden"), ".hidden");
    std::filesystem::current_path("/");
    EXPECT_EQ(Expanded(QxSearchPath::ExpandPath, "../x"), "/x");
    EXPECT_EQ(Expanded(QxSearchPath::ExpandPath, ".."), "/");
}

TEST(QxSearchPath, ExpandsFileNames)
{
    const Variable home("HOME", nullptr);
    const Variable tree("QX_TEST_TREE", "/tree/");
    static const TextCase cases[] = {
        {"$QX_TEST_TREE/a.tx", "/tree/a.tx"},
        {"a////b.tx", "a/b.tx"},
        {"a/.", "a"},
        {"a/", "a"},
        {"~/a", "~/a"},
        {"../a", "../a"},
    };
    for (const TextCase& c : cases)
        EXPECT_EQ(Expanded(QxSearchPath::ExpandName, c.in), c.out) << c.in;
}

TEST(QxSearchPath, SubstitutesVariablesOfAnyLength)
{
    const std::string name(1000, 'N');
    const std::string value(10000, 'v');
    const Variable variable(name.c_str(), value.c_str());
    EXPECT_EQ(Expanded(QxSearchPath::SubstituteEnvVar, ("/a/$" + name + "/b$").c_str()),
              "/a/" + value + "/b");
}

TEST(QxSearchPath, FillsItsListsFromTheEnvironment)
{
    const Variable tree("OMBRIUM", "/tree");
    const Variable shaders("QX_SHADERS_PATH", "/s:@;/t//:&:$OMBRIUM/u/.");
    const Variable textures("QX_TEXTURES_PATH", nullptr);
    const Variable displays("QX_DISPLAYS_PATH", "");
    const Variable archives("QX_ARCHIVES_PATH", "::/a;;");
    const Variable procedurals("QX_PROCEDURALS_PATH", nullptr);
    const Variable resources("QX_RESOURCES_PATH", "/r");
    const std::string here = std::filesystem::current_path().string() + "/";
    const QxSearchPath paths;
    EXPECT_THAT(paths.Directories(QxSearchPath::e_shaders),
                ElementsAre("/s/", here, "/tree/shaders/", "/t/", "/tree/u/", "/r/"));
    EXPECT_THAT(paths.Directories(QxSearchPath::e_textures),
                ElementsAre(here, "/tree/textures/", "/r/"));
    EXPECT_THAT(paths.Directories(QxSearchPath::e_displays), ElementsAre("/r/"));
    EXPECT_THAT(paths.Directories(QxSearchPath::e_archives), ElementsAre("/a/", "/r/"));
    EXPECT_THAT(paths.Directories(QxSearchPath::e_procedurals), ElementsAre(here, "/r/"));
    EXPECT_THAT(paths.Directories(QxSearchPath::e_resources), ElementsAre());
}

TEST(QxSearchPath, KeepsAndReplacesLists)
{
    QxSearchPath paths;
    constexpr auto kind = QxSearchPath::e_textures;
    paths.SetPath(kind, "/old", true);
    paths.SetPath(kind, "/a:&:/b", true);
    EXPECT_THAT(paths.Directories(kind), ElementsAre("/a/", "/old/", "/b/"));
    paths.SetPath(kind, "/c", false);
    paths.SetPath(kind, nullptr, true);
    EXPECT_THAT(paths.Directories(kind), ElementsAre("/a/", "/old/", "/b/", "/c/"));
    paths.SetPath(kind, "&:/:&", true);
    EXPECT_EQ(paths.Directories(kind).size(), 9u);
    paths.DeleteCategory(kind);
    EXPECT_THAT(paths.Directories(kind), ElementsAre());
    const auto none = static_cast<QxSearchPath::QxCategory>(6);
    paths.SetPath(none, "/x", true);
    paths.DeleteCategory(none);
    EXPECT_THAT(paths.Directories(none), ElementsAre());
}

TEST(QxSearchPath, FindsFilesByTheirAccess)
{
    const TemporaryFolder folder;
    TemporaryFolder::Write("one/plain.tx", "");
    TemporaryFolder::Write("two/plain.tx", "");
    TemporaryFolder::Write("two/run", "");
    TemporaryFolder::Write("two/name", "");
    std::filesystem::create_directories("one/name");
    std::filesystem::permissions("two/run", std::filesystem::perms(0755));
    QxSearchPath paths;
    constexpr auto kind = QxSearchPath::e_displays;
    paths.SetPath(kind, "./one:./two", true);
    const std::string here = std::filesystem::current_path();
    using Path = QxSearchPath;
    struct Case {
        std::string name;
        Path::QxAccess access;
        std::string path;
    };
    const Case cases[] = {
        {"plain.tx", Path::e_exists, "/one/plain.tx"},
        {"plain.tx", Path::e_readable, "/one/plain.tx"},
        {"plain.tx", Path::e_writable, "/one/plain.tx"},
        {"plain.tx", Path::e_executable, ""},
        {"run", Path::e_readableExecutable, "/two/run"},
        {"run", Path::e_writableExecutable, "/two/run"},
        {"name", Path::e_exists, "/two/name"},
        {"new", Path::e_writable, ""},
        {here + "/one//plain.tx", Path::e_readable, "/one/plain.tx"},
        {here + "/three", Path::e_exists, ""},
        {here, Path::e_exists, ""},
        {"", Path::e_exists, ""},
        {"plain.tx", static_cast<Path::QxAccess>(6), ""},
        {std::string(5000, 'x'), Path::e_exists, ""},
    };
    for (const Case& c : cases) {
        const char* found = paths.Find(kind, c.name.c_str(), c.access);
        EXPECT_EQ(found ? found : "", c.path.empty() ? "" : here + c.path) << c.name;
    }
    EXPECT_EQ(paths.Find(kind, nullptr, Path::e_exists), nullptr);
    EXPECT_FALSE(std::filesystem::exists("one/new"));
}

TEST(StringSubstitution, ReplacesFromLeftToRight)
{
    struct Case {
        const char* in;
        const char* pattern;
        const char* replacement;
        const char* substituted;
        const char* prefixed;
    };
    static const Case cases[] = {
        {"aaa", "aa", "b", "ba", "ba"}, {"a.b.c", ".", "::", "a::b::c", "a.b.c"},
        {"", "a", "b", "", ""},         {"abc", "", "x", "abc", "xabc"},
        {"abc", "abc", "", "", ""},
    };
    for (const Case& c : cases) {
        std::string text = c.in;
        std::string prefixed;
        StringSubstitution(text, text.c_str(), c.pattern, c.replacement);
        PrefixSubstitution(prefixed, c.in, c.pattern, c.replacement);
        EXPECT_EQ(text, c.substituted) << c.in;
        EXPECT_EQ(prefixed, c.prefixed) << c.in;
        StringSubstitution(text, nullptr, c.pattern, c.replacement);
        EXPECT_EQ(text, c.substituted);
    }
}

}  // namespace
