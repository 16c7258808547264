// Checks which changes of files a source notices.

#include <cstdlib>
#include <gtest/gtest.h>

#include "helpers/TemporaryFolder.h"
#include "sqxview/SqxViewSource.h"

namespace {

/// Sets a variable of the environment as long as the object exists.
class Variable {
public:
    Variable(const char* name, const std::string& value) : m_name(name)
    {
        setenv(name, value.c_str(), 1);
    }
    ~Variable() { unsetenv(m_name); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
};

SqxViewCompiled Compiled(SqxViewSource& source)
{
    const auto compiled = source.Compile([] { return false; });
    EXPECT_TRUE(compiled);
    return compiled.value_or(SqxViewCompiled());
}

TEST(SqxViewSource, NoticesFilesThatChangeWhileTheFirstCompileReadsThem)
{
    const TemporaryFolder folder;
    TemporaryFolder::Write("tint.h", "color tint() { return 1; }\n");
    TemporaryFolder::Write("next.h", "color tint() { return nothing; }\n");
    TemporaryFolder::Write("a.sl", "surface a() { Ci = tint(); }\n");
    const Variable command("SLC_CPP_COMMAND",
                           "{ echo '# 1 \"a.sl\"'; echo '# 1 \"tint.h\" 1'; cat tint.h; "
                           "echo '# 1 \"a.sl\" 2'; cat a.sl; } >\"$cpp_result\"; "
                           "if [ -e next.h ]; then mv next.h tint.h; fi");
    SqxViewSource source("a.sl", {});
    EXPECT_TRUE(Compiled(source).shader);
    EXPECT_TRUE(source.HasChanged());
    for (int i = 0; i < 2; ++i)
        EXPECT_FALSE(Compiled(source).shader);
    EXPECT_FALSE(source.HasChanged());
}

TEST(SqxViewSource, IsNotCompiledAgainBecauseOfTheFoldersOfItsCompiles)
{
    const TemporaryFolder folder;
    const Variable temporary("TMPDIR", std::filesystem::current_path());
    TemporaryFolder::Write("a.sl", "surface a() { Ci = nothing; }\n");
    SqxViewSource source("a.sl", {});
    for (int i = 0; i < 2; ++i)
        EXPECT_FALSE(Compiled(source).shader);
    EXPECT_FALSE(source.HasChanged());
    TemporaryFolder::Write("b.h", "");
    EXPECT_TRUE(source.HasChanged());
}

TEST(SqxViewSource, ReportsAMissingFolderForTemporaryFiles)
{
    const TemporaryFolder folder;
    const std::filesystem::path here = std::filesystem::current_path();
    TemporaryFolder::Write("a.sl", "surface a() { Ci = 1; }\n");
    const Variable temporary("TMPDIR", here / "none");
    SqxViewSource source("a.sl", {});
    EXPECT_NE(Compiled(source).report, "");
    std::filesystem::create_directory(here / "none");
    EXPECT_TRUE(Compiled(source).shader);
    std::filesystem::remove_all(here / "none");
    std::filesystem::create_directory(here / "none");
    EXPECT_TRUE(Compiled(source).shader);
}

}  // namespace
