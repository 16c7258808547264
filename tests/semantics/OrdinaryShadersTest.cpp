// Shaders as people write them pass without a report.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "helpers/CheckedShader.h"

namespace {

std::string TextOf(const std::filesystem::path& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// In the order of their names.
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
        EXPECT_EQ(CheckedShader(TextOf(path), {}, 2).Output(), "") << path.filename();
}

}  // namespace
