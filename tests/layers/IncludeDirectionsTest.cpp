// Checks that each folder of src/ and runtime/ includes only files of itself and of the folders
// before it in a list. The test reads the text of the sources, so it also sees includes that the
// preprocessor skips in this build.

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

struct Tree {
    const char* root;
    std::vector<std::string> folders;  // from the bottom up: each includes only itself and earlier
};

// The compiler includes tables in runtime/shading and runtime/sqx, so these are below its folders.
const Tree k_compiler = {SLC_SOURCE_FOLDER "/src",
                         {"shading", "sqx", "support", "preprocessor", "frontend",
                          "support/reports", "symbols", "semantics", "icode", "lowering",
                          "optimizer", "backends", "compiler", "driver"}};
const Tree k_runtime = {
    SLC_SOURCE_FOLDER "/runtime",
    {"shading", "sqx", "kernels", "machine/verify", "machine/translate", "machine/run", "host"}};

/// Returns the position of a file's folder in `tree.folders`, or -1 if it is not there. Folders in
/// driver/ count as driver.
int Rank(const Tree& tree, const fs::path& file)
{
    std::string folder = file.parent_path().generic_string();
    if (folder.starts_with("driver/"))
        folder = "driver";
    const auto found = std::find(tree.folders.begin(), tree.folders.end(), folder);
    return found == tree.folders.end() ? -1 : static_cast<int>(found - tree.folders.begin());
}

bool Exists(const Tree& tree, const fs::path& included)
{
    return fs::exists(tree.root / included) || fs::exists(k_runtime.root / included);
}

/// Returns the files that `file` includes between the two characters of `marks`, as it writes them.
std::vector<fs::path> Includes(const fs::path& file, const std::string& marks = "\"\"")
{
    const std::regex include("^\\s*#\\s*include\\s*" + marks.substr(0, 1) + "([^\">]+)" +
                             marks.substr(1) + ".*");
    std::vector<fs::path> found;
    std::ifstream text(file);
    std::smatch match;
    for (std::string line; std::getline(text, line);)
        if (std::regex_match(line, match, include))
            found.emplace_back(match[1].str());
    return found;
}

/// Checks all includes in quotes that name a folder, and returns their number.
int CheckTree(const Tree& tree)
{
    int checked = 0;
    for (const auto& entry : fs::recursive_directory_iterator(tree.root)) {
        static const std::string k_sources = ".cpp.h.def.y.l";
        const std::string extension = entry.path().extension();
        if (extension.empty() || k_sources.find(extension) == std::string::npos)
            continue;
        const fs::path source = fs::relative(entry.path(), tree.root);
        const int rank = Rank(tree, source);
        EXPECT_GE(rank, 0) << source << " lies in no known folder";
        for (const fs::path& included : Includes(entry.path())) {
            // Generated files, and the headers of runtime/shading, which is below all folders,
            // are included by their bare names.
            if (!included.has_parent_path())
                continue;
            ++checked;
            EXPECT_TRUE(Exists(tree, included)) << source << " includes " << included;
            EXPECT_GE(Rank(tree, included), 0) << source << " includes " << included;
            EXPECT_LE(Rank(tree, included), rank) << source << " includes " << included;
        }
    }
    return checked;
}

TEST(IncludeDirections, FoldersIncludeOnlyDownward)
{
    EXPECT_GT(CheckTree(k_compiler), 100);
    EXPECT_GT(CheckTree(k_runtime), 20);
}

// A header of runtime/shading may include only those system headers that slcShaderCCodeOp.h
// includes first. That header then makes all later declarations hidden, which would keep shared
// objects from linking to a system library. Also, most of the standard library takes longer to
// compile than a small shader. Shared objects do not include QxHostError.h.
TEST(IncludeDirections, ShadingHeadersIncludeOnlySharedSystemHeaders)
{
    const fs::path folder = fs::path(k_runtime.root) / "shading";
    const std::vector<fs::path> named = Includes(folder / "slcShaderCCodeOp.h", "<>");
    EXPECT_GT(named.size(), 3U);
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() != ".h" || entry.path().filename() == "QxHostError.h")
            continue;
        for (const fs::path& included : Includes(entry.path(), "<>"))
            EXPECT_NE(std::find(named.begin(), named.end(), included), named.end())
                << entry.path().filename() << " includes " << included;
    }
    for (const char* costly : {"algorithm", "cmath", "map", "string", "vector"})
        EXPECT_EQ(std::find(named.begin(), named.end(), costly), named.end()) << costly;
}

}  // namespace
