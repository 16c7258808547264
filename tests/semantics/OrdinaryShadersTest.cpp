// Checks that shaders as users write them give no report.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "helpers/CheckedShader.h"
#include "helpers/TemporaryFolder.h"

namespace {

/// Returns the shaders in a folder, sorted by name.
std::set<std::filesystem::path> ShadersIn(const std::filesystem::path& folder)
{
    std::set<std::filesystem::path> shaders;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".sl")
            shaders.insert(entry.path());
    return shaders;
}

TEST(OrdinaryShaders, PassWithoutReports)
{
    const auto shaders = ShadersIn(std::filesystem::path(SLC_TEST_FOLDER) / "ordinary");
    EXPECT_GE(shaders.size(), 20u);
    for (const auto& path : shaders)
        EXPECT_EQ(CheckedShader(TemporaryFolder::Read(path), {}, 2).Output(), "")
            << path.filename();
}

}  // namespace
