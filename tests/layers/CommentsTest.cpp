// Checks that comments of the product name only existing files, and names with the prefixes Slc,
// Sqx and Qx that occur in code. A change that renames one may leave its old name in a comment.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path k_root = SLC_SOURCE_FOLDER;

/// A line that contains nothing but a comment.
struct Comment {
    std::string place;  // file and line
    std::string text;
};

/// What the tests need of the sources.
struct Sources {
    std::vector<Comment> comments;    // of the product
    std::set<std::string> words;      // of all other lines, also of comments after code
    std::set<std::string> fileNames;  // of all files, without folders

    void Read(const fs::path& folder, bool isProduct);
};

void Sources::Read(const fs::path& folder, bool isProduct)
{
    static const std::regex word(R"(\w+)");
    for (const auto& entry : fs::recursive_directory_iterator(k_root / folder)) {
        if (!entry.is_regular_file())
            continue;
        const fs::path& path = entry.path();
        fileNames.insert(path.filename());
        const std::string extension = path.extension();
        if (extension != ".h" && extension != ".cpp" && extension != ".def")
            continue;
        std::ifstream file(path);
        int number = 0;
        for (std::string line; std::getline(file, line);) {
            ++number;
            const std::size_t begin = line.find_first_not_of(' ');
            if (begin != std::string::npos && line.compare(begin, 2, "//") == 0) {
                if (isProduct)
                    comments.push_back({path.string() + ":" + std::to_string(number), line});
            } else {
                for (std::sregex_iterator i(line.begin(), line.end(), word), end; i != end; ++i)
                    words.insert(i->str());
            }
        }
    }
}

const Sources& AllSources()
{
    static const Sources sources = [] {
        Sources all;
        for (const char* folder : {"src", "runtime", "tools"})
            all.Read(folder, true);
        for (const char* folder : {"tests", "bench"})
            all.Read(folder, false);
        return all;
    }();
    return sources;
}

/// Calls `visit(comment, match)` for each part of a comment that matches `pattern`.
template <class Visit>
void ForEachNamed(const std::regex& pattern, Visit visit)
{
    for (const Comment& comment : AllSources().comments)
        for (std::sregex_iterator i(comment.text.begin(), comment.text.end(), pattern), end;
             i != end; ++i)
            visit(comment, *i);
}

}  // namespace

TEST(Comments, NameExistingFiles)
{
    int found = 0;
    const std::regex path(R"(\b(src|tests|docs|runtime|tools|scripts|bench)/[\w/-]+\.\w+)");
    ForEachNamed(path, [&](const Comment& comment, const std::smatch& match) {
        ++found;
        EXPECT_TRUE(fs::exists(k_root / match.str())) << match.str() << "\n" << comment.place;
    });
    EXPECT_GT(found, 100);
    const std::regex name(R"(\b(Slc|Sqx|Qx)[A-Z]\w*\.(cpp|h|def)\b)");
    ForEachNamed(name, [&](const Comment& comment, const std::smatch& match) {
        EXPECT_EQ(AllSources().fileNames.count(match.str()), 1u) << match.str() << "\n"
                                                                 << comment.place;
    });
}

TEST(Comments, NameExistingClasses)
{
    int found = 0;
    const std::set<std::string>& words = AllSources().words;
    const std::regex name(R"(\b(Slc|Sqx|Qx)[A-Z]\w*(?!\w|\.\w))");
    ForEachNamed(name, [&](const Comment& comment, const std::smatch& match) {
        ++found;
        EXPECT_TRUE(words.contains(match.str())) << match.str() << "\n" << comment.place;
    });
    EXPECT_GT(found, 100);
}
