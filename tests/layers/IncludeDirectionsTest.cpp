// A folder includes only itself and the folders below it. Checked on the text of every source, so
// that an include in a branch that this build leaves out counts too.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// From the bottom up.
const std::string k_folders[] = {"support", "frontend",  "support/reports", "symbols", "semantics",
                                 "icode",   "optimizer", "backends",        "driver"};

/// The place of a file's folder from the bottom; -1 if it lies in none of them.
int Rank(const fs::path& file)
{
    std::string folder = file.parent_path().generic_string();
    if (folder.starts_with("driver/"))
        folder = "driver";
    const auto* found = std::find(std::begin(k_folders), std::end(k_folders), folder);
    return found == std::end(k_folders) ? -1 : static_cast<int>(found - std::begin(k_folders));
}

/// The files that `file` includes with quotes, as written.
std::vector<fs::path> Includes(const fs::path& file)
{
    static const std::regex include("^\\s*#\\s*include\\s*\"([^\"]+)\".*");
    std::vector<fs::path> found;
    std::ifstream text(file);
    std::smatch match;
    for (std::string line; std::getline(text, line);)
        if (std::regex_match(line, match, include))
            found.emplace_back(match[1].str());
    return found;
}

TEST(IncludeDirections, FoldersIncludeOnlyDownward)
{
    const fs::path root = SLC_SOURCE_FOLDER;
    int checked = 0;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        static const std::string k_sources = ".cpp.h.def.y.l";
        const std::string extension = entry.path().extension();
        if (extension.empty() || k_sources.find(extension) == std::string::npos)
            continue;
        const fs::path source = fs::relative(entry.path(), root);
        const int rank = Rank(source);
        EXPECT_GE(rank, 0) << source << " lies in no known folder";
        for (const fs::path& included : Includes(entry.path())) {
            // What the build generates lies in no folder and is found by its bare name.
            if (!included.has_parent_path())
                continue;
            ++checked;
            EXPECT_TRUE(fs::exists(root / included)) << source << " includes " << included;
            EXPECT_LE(Rank(included), rank) << source << " includes " << included;
        }
    }
    EXPECT_GT(checked, 100);
}

}  // namespace
